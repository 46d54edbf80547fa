#pragma once

#include "core/isub.h"

#include <QString>
#include <QStringView>

class CTiming;

// The head of a script: [Script Info] of SSA and ASS, the <HEAD> of SAMI, the tags of
// LRC and the head text of SST. ScriptType chooses which head the text form is.
class CSubInfo : public isub
{
public:
    // Public fields.
    CTiming *ParentTiming = nullptr;
    QString SMIStyleType;
    QString SMIComment;
    QString SSTHead;

    void Init(CTiming *parentTiming = nullptr);

#define VELMAR_PROPERTY(Type, Name, member)                                                                      \
    Type Name() const { return member; }                                                                        \
    void set##Name(Type value) { member = value; }
    VELMAR_PROPERTY(QString, Title, m_title)
    VELMAR_PROPERTY(QString, OriginalScript, m_originalScript)
    VELMAR_PROPERTY(QString, OriginalTranslation, m_originalTranslation)
    VELMAR_PROPERTY(QString, OriginalEditing, m_originalEditing)
    VELMAR_PROPERTY(QString, OriginalTiming, m_originalTiming)
    VELMAR_PROPERTY(double, SynchPoint, m_synchPoint)
    VELMAR_PROPERTY(QString, ScriptUpdatedBy, m_scriptUpdatedBy)
    VELMAR_PROPERTY(QString, UpdateDetails, m_updateDetails)
    VELMAR_PROPERTY(qint32, ScriptType, m_scriptType)
    VELMAR_PROPERTY(qint16, Collisions, m_collisions)
    VELMAR_PROPERTY(double, PlayResX, m_playResX)
    VELMAR_PROPERTY(double, PlayResY, m_playResY)
    VELMAR_PROPERTY(double, PlayDepth, m_playDepth)
    VELMAR_PROPERTY(double, Timer, m_timer)
    VELMAR_PROPERTY(qint16, WrapStyle, m_wrapStyle)
    VELMAR_PROPERTY(QString, Comment, m_comment)
    VELMAR_PROPERTY(QString, LrcName, m_lrcName)
    VELMAR_PROPERTY(QString, LrcArtist, m_lrcArtist)
    VELMAR_PROPERTY(QString, LrcCDName, m_lrcCDName)
    VELMAR_PROPERTY(QString, LrcEditor, m_lrcEditor)
    VELMAR_PROPERTY(double, LrcOffset, m_lrcOffset)
#undef VELMAR_PROPERTY

    // The generated comment: four lines, each ended by "\r\n", stamped with Now().
    QString VelmarComment() const { return m_velmarComment; }

    // "SSA V4.00", "AAS V4.00+" or "SAMI"; any other type raises error 5.
    QString ScriptTypeName() const;
    // "Reverse" for 1, "Normal" otherwise.
    QString SubCollisionsName() const;
    // Takes PlayResX and PlayResY from the picture of the document's player, if any.
    void UpdateAVISize();

    // The head of the present ScriptType ("" for types without one).
    QString Content() override;
    // Reads [Script Info] out of a whole script.
    void setContent(const QString &text) override { Read(text); }
    void Read(QStringView text);
    // Back to the defaults, except the picture size, the SAMI and SST heads and the
    // less used text fields.
    void Clear() override;

private:
    void makeVelmarComment();
    QString scriptTypeKey() const;

    QString m_title;
    QString m_originalScript;
    QString m_originalTranslation;
    QString m_originalEditing;
    QString m_originalTiming;
    double m_synchPoint = 0;
    QString m_scriptUpdatedBy;
    QString m_updateDetails;
    qint32 m_scriptType = 2;
    qint16 m_collisions = 0;
    double m_playResX = 0;
    double m_playResY = 0;
    double m_playDepth = 0;
    double m_timer = 100;
    qint16 m_wrapStyle = 0;
    QString m_comment;
    QString m_lrcName;
    QString m_lrcArtist;
    QString m_lrcCDName;
    QString m_lrcEditor;
    double m_lrcOffset = 0;
    QString m_velmarComment;
};
