#pragma once

#include <QString>
#include <QStringList>

// What a generator gives: its lines, and whether each is followed by CR LF in the
// result box (the per-character effects) or the result is one line without a break.
struct CEffectResult
{
    QStringList Lines;
    bool LineEnds = true;

    QString Text() const
    {
        if (!LineEnds)
            return Lines.join(QString());
        QString text;
        for (const QString &line : Lines)
            text += line + QStringLiteral("\r\n");
        return text;
    }
};
