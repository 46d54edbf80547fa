#include "pages/basPageLayout.h"

#include "core/IPictureBox.h"
#include "core/basConvert.h"
#include "script/CSSAContentLine.h"

#include <QStringList>

#include <optional>

using namespace basConvert;

namespace basPageLayout {

namespace {

void applyFont(IPictureBox &box, const CPageLine &line)
{
    if (!line.HasStyle) {
        box.setFontName(QStringLiteral("Arial"));
        box.setForeColor(0xFFFFFF);
        return;
    }
    box.setFontName(line.FontName);
    box.setFontSize(line.FontSize);
    box.setFontBold(line.Bold);
    box.setFontItalic(line.Italic);
    box.setFontUnderline(line.UnderLine);
    box.setFontStrikethru(line.StrikeOut);
    box.setForeColor(line.PrimaryColour);
}

void printCentred(IPictureBox &box, const CPageLine &line)
{
    box.setCurrentY(line.DisplayY);
    const qint32 middle = IntDiv(box.ScaleWidth(), 2);
    for (const QString &part : line.Dialog.split(QStringLiteral("\r\n"))) {
        box.setCurrentX(middle - IntDiv(box.TextWidth(part), 2));
        box.Print(part);
    }
}

bool isTop(const CPageLine &line)
{
    return line.HasStyle && line.Alignment == 8;
}

} // namespace

QString PreviewDialog(const QString &dialog)
{
    QString text = dialog;
    text.replace(QStringLiteral("\\N"), QStringLiteral("\r\n"));
    text.replace(QStringLiteral("\\n"), QStringLiteral("\r\n"));
    text.replace(QStringLiteral("\\h"), QStringLiteral(" "));
    return StripOverrides(text);
}

bool Overlaps(qint32 y, qint32 height, const CPageLine &other)
{
    return double(y) < double(other.DisplayY) + other.DisplayHeight + 1
        && double(other.DisplayY) < double(y) + height + 1;
}

void DisplayPageLines(IPictureBox &box, QList<CPageLine> &lines, const CPageMargins &margins)
{
    box.Cls();
    for (CPageLine &line : lines)
        line.Displayed = false;

    for (CPageLine &line : lines) {
        if (!line.ForcePosition)
            continue;
        applyFont(box, line);
        line.DisplayHeight = CLng(box.TextHeight(line.Dialog));
        printCentred(box, line);
        line.Displayed = true;
    }

    const double between = margins.DefaultBetweenV;
    std::optional<double> runningTop, runningBottom;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        CPageLine &line = lines[i];
        if (line.ForcePosition)
            continue;
        applyFont(box, line);
        line.DisplayHeight = CLng(box.TextHeight(line.Dialog));
        const bool top = isTop(line);
        double y;
        if (top) {
            y = runningTop.value_or(double(margins.DefaultMarginTop) - between) + between;
            runningTop = y;
        } else {
            y = runningBottom.value_or(box.ScaleHeight() - margins.DefaultMarginBottom + between)
                - line.DisplayHeight - between;
            runningBottom = y;
        }
        line.DisplayY = CLng(y);
        // Move past every placed line it would touch; the moves only go one way, so
        // each other line is passed at most once.
        for (bool moved = true; moved;) {
            moved = false;
            for (qsizetype j = 0; j < lines.size(); ++j) {
                const CPageLine &other = lines[j];
                if (j == i || !other.Displayed || !Overlaps(line.DisplayY, line.DisplayHeight, other))
                    continue;
                line.DisplayY = top ? CLng(other.DisplayY + other.DisplayHeight + between + 1.0)
                                    : CLng(other.DisplayY - line.DisplayHeight - between - 1.0);
                moved = true;
                break;
            }
        }
        printCentred(box, line);
        line.Displayed = true;
    }
}

} // namespace basPageLayout
