#pragma once

#include <QString>
#include <QStringView>

class CSMIContent;
class CSRTContent;
class CSMPContent;
class CSSTContent;
class CLRCContent;
class CSSAContent;

// The meeting points of the other formats with the event list: a format list as the
// text of an [Events] section, and the event list as the text of a file of the format.
namespace basFormatConvert {

// "[Events]", its format line and one Dialogue line of style "*Default" and owner
// "说话人" for every line that isn't blank.
QString SMIToEvents(const CSMIContent &content);
QString SRTToEvents(const CSRTContent &content);
QString SMPToEvents(const CSMPContent &content);
QString SSTToEvents(const CSSTContent &content);
QString LRCToEvents(const CLRCContent &content);

// The event list as the text of a file. Blank lines are left out; SMP, SST and LRC
// leave out empty lines at time 0 as well.
QString ContentToSMI(const CSSAContent &content);
QString ContentToSRT(const CSSAContent &content);
// By the list's ScriptSubType: 0 writes each line with its own end mark, 1 both times on
// one line; any other sub-type writes no lines.
QString ContentToSMP(const CSSAContent &content);
QString ContentToSST(const CSSAContent &content);
// Each line's stamp, and a bare end stamp where the next line doesn't start at its end.
QString ContentToLRC(const CSSAContent &content);

// The <HEAD> of every SAMI file written, each line followed by "\r\n".
QString SMIHeadText();

// A text with its override blocks removed, "\h" as a blank and each line break as a
// line of its own, joined by "\r\n".
QString StripOverridesToLines(const QString &dialog);
// The same, appended to `out`.
void AppendStripOverridesToLines(QString &out, QStringView dialog);

} // namespace basFormatConvert
