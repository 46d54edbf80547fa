#pragma once

#include <QString>
#include <QStringList>

class CSubInfo;

// The script information dialog's fields as text and list choices, one to one with the
// members of CSubInfo. Read fills them from the head; Write puts every field back (a
// number field that reads as no number, or a list with no choice, keeps the member).
// The generated comment is shown and never written back.
class CScriptInfoFields
{
public:
    // General page.
    QString Title;
    QString Comment; // lines joined by "\n", as a text box holds them
    QString OriginalScript;
    QString OriginalTranslation;
    QString OriginalEditing;
    QString OriginalTiming;
    QString SynchPoint;
    QString ScriptUpdatedBy;
    QString UpdateDetails;
    int ScriptType = -1; // index into ScriptTypeItems()
    int Collisions = -1; // index into CollisionItems()
    QString PlayResX;
    QString PlayResY;
    QString PlayDepth;
    QString Timer;
    int WrapStyle = -1; // index into WrapStyleItems()
    // LRC page.
    QString LrcName;
    QString LrcArtist;
    QString LrcCDName;
    QString LrcEditor;
    QString LrcOffset;
    // Shown only.
    QString VelmarComment;

    void Read(const CSubInfo &info);
    void Write(CSubInfo &info) const;

    // The lists, from the catalogue: SSA and ASS; the four wrap styles; the two
    // collision orders.
    static QStringList ScriptTypeItems();
    static QStringList WrapStyleItems();
    static QStringList CollisionItems();
    // The wrap style (and its label) can be chosen only for an ASS script.
    static bool WrapStyleEnabled(int scriptTypeIndex);
};
