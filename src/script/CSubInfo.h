#pragma once

#include "core/isub.h"
#include "script/ISubInfoHost.h"
#include "script/ScriptType.h"

#include <QString>
#include <QStringView>

// The head of a script: [Script Info] of SSA and ASS, the <HEAD> of SAMI, the tags of
// LRC and the head text of SST. ScriptType chooses which head the text form is.
class CSubInfo : public isub
{
public:
    // Public fields.
    // The document that owns the head, for its video (none alone).
    ISubInfoHost *ParentTiming = nullptr;
    QString SMIStyleType;
    QString SMIComment;
    QString SSTHead;

    void Init(ISubInfoHost *parentTiming = nullptr);

    QString Title() const { return m_title; }
    void setTitle(const QString &value) { m_title = value; }
    QString OriginalScript() const { return m_originalScript; }
    void setOriginalScript(const QString &value) { m_originalScript = value; }
    QString OriginalTranslation() const { return m_originalTranslation; }
    void setOriginalTranslation(const QString &value) { m_originalTranslation = value; }
    QString OriginalEditing() const { return m_originalEditing; }
    void setOriginalEditing(const QString &value) { m_originalEditing = value; }
    QString OriginalTiming() const { return m_originalTiming; }
    void setOriginalTiming(const QString &value) { m_originalTiming = value; }
    double SynchPoint() const { return m_synchPoint; }
    void setSynchPoint(double value) { m_synchPoint = value; }
    QString ScriptUpdatedBy() const { return m_scriptUpdatedBy; }
    void setScriptUpdatedBy(const QString &value) { m_scriptUpdatedBy = value; }
    QString UpdateDetails() const { return m_updateDetails; }
    void setUpdateDetails(const QString &value) { m_updateDetails = value; }
    ::ScriptType ScriptType() const { return m_scriptType; }
    void setScriptType(::ScriptType value) { m_scriptType = value; }
    qint16 Collisions() const { return m_collisions; }
    void setCollisions(qint16 value) { m_collisions = value; }
    double PlayResX() const { return m_playResX; }
    void setPlayResX(double value) { m_playResX = value; }
    double PlayResY() const { return m_playResY; }
    void setPlayResY(double value) { m_playResY = value; }
    double PlayDepth() const { return m_playDepth; }
    void setPlayDepth(double value) { m_playDepth = value; }
    double Timer() const { return m_timer; }
    void setTimer(double value) { m_timer = value; }
    qint16 WrapStyle() const { return m_wrapStyle; }
    void setWrapStyle(qint16 value) { m_wrapStyle = value; }
    QString Comment() const { return m_comment; }
    void setComment(const QString &value) { m_comment = value; }
    QString LrcName() const { return m_lrcName; }
    void setLrcName(const QString &value) { m_lrcName = value; }
    QString LrcArtist() const { return m_lrcArtist; }
    void setLrcArtist(const QString &value) { m_lrcArtist = value; }
    QString LrcCDName() const { return m_lrcCDName; }
    void setLrcCDName(const QString &value) { m_lrcCDName = value; }
    QString LrcEditor() const { return m_lrcEditor; }
    void setLrcEditor(const QString &value) { m_lrcEditor = value; }
    double LrcOffset() const { return m_lrcOffset; }
    void setLrcOffset(double value) { m_lrcOffset = value; }

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
    ::ScriptType m_scriptType = ::ScriptType::ASS;
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
