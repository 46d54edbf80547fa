#include "effects/CEffectPages.h"

#include "core/basConvert.h"
#include "effects/basEffectExplain.h"
#include "effects/basEffectTag.h"

#include <QVariantList>

#include <algorithm>
#include <cmath>

namespace {

const QString Pixels = QStringLiteral("象素");
const QString Seconds = QStringLiteral("秒");
const QString Millis = QStringLiteral("ms");

QVariant sliderValue(const CEffectSlider &s)
{
    return QVariantList { s.Max, s.Value, s.SelStart, s.SelLength };
}

void setSlider(CEffectSlider &s, const QVariant &value)
{
    const QVariantList v = value.toList();
    if (v.size() != 4)
        return;
    s.Max = v[0].toInt();
    s.Value = v[1].toInt();
    s.SelStart = v[2].toInt();
    s.SelLength = v[3].toInt();
}

// MaxRows, then the two cells of each row.
QVariant spreadValue(const CEffectSpread &s)
{
    QVariantList v { s.MaxRows() };
    for (int row = 1; row <= s.MaxRows(); ++row)
        v << s.Text(row, 1) << s.Text(row, 2);
    return v;
}

void setSpread(CEffectSpread &s, const QVariant &value)
{
    const QVariantList v = value.toList();
    if (v.isEmpty())
        return;
    s.setMaxRows(v[0].toInt());
    for (int row = 1; row <= s.MaxRows() && 2 * row < v.size(); ++row) {
        s.setText(row, 1, v[2 * row - 1].toString());
        s.setText(row, 2, v[2 * row].toString());
    }
}

} // namespace

CEffectPages::CEffectPages()
{
    addControls(QStringLiteral("fraEffect"), QStringLiteral("Frame"), 0);
    addControls(QStringLiteral("txtArg"), QStringLiteral("TextBox"), CEffectArgs::TextBoxCount);
    addControls(QStringLiteral("lbltxtArg"), QStringLiteral("Label"), CEffectArgs::TextBoxCount);
    addControls(QStringLiteral("lblSldArg"), QStringLiteral("Label"), 1);
    addControls(QStringLiteral("sldArg"), QStringLiteral("Slider"), 1);
    addControls(QStringLiteral("picArg"), QStringLiteral("PictureBox"), 2);
    addControls(QStringLiteral("lblpicArg"), QStringLiteral("Label"), 2);
    addControls(QStringLiteral("optArg"), QStringLiteral("OptionButton"), 3);
    addControls(QStringLiteral("chkArg"), QStringLiteral("CheckBox"), 1);
    addControls(QStringLiteral("spdArg"), QStringLiteral("vaSpread"), 1);
    addControls(QStringLiteral("lblspdArg"), QStringLiteral("Label"), 1);
    addControls(QStringLiteral("rtfArg"), QStringLiteral("RichTextBox"), 1);
    addControls(QStringLiteral("lblrtfArg"), QStringLiteral("Label"), 1);
    addControls(QStringLiteral("optDrawMN"), QStringLiteral("OptionButton"), 2);
    addControls(QStringLiteral("txtDrawYbaseline"), QStringLiteral("TextBox"), 0);
    addControls(QStringLiteral("lblSSADraw"), QStringLiteral("Label"), 0);
    addControls(QStringLiteral("cmdCreate"), QStringLiteral("CommandButton"), 0);
    // The colour boxes start with the form's own colours.
    Control(QStringLiteral("picArg"), 0)->BackColor = 0xFFFFFF;
    Control(QStringLiteral("picArg"), 1)->BackColor = 0x0000FF;
}

// count 0 adds a single control that is in no array
void CEffectPages::addControls(const QString &name, const QString &typeName, int count)
{
    for (int i = 0; i < std::max(count, 1); ++i) {
        CEffectControl c;
        c.Name = name;
        c.Index = count == 0 ? -1 : i;
        c.TypeName = typeName;
        m_controls.push_back(std::move(c));
    }
}

CEffectControl *CEffectPages::Control(const QString &name, int index)
{
    auto it = std::find_if(m_controls.begin(), m_controls.end(),
        [&](const CEffectControl &c) { return c.Name == name && c.Index == index; });
    return it == m_controls.end() ? nullptr : &*it;
}

const CEffectControl *CEffectPages::Control(const QString &name, int index) const
{
    return const_cast<CEffectPages *>(this)->Control(name, index);
}

void CEffectPages::SetOption(const QString &name, int index)
{
    for (CEffectControl &c : m_controls)
        if (c.Name == name)
            c.Value = c.Index == index;
}

QList<const CEffectControl *> CEffectPages::VisibleControls() const
{
    QList<const CEffectControl *> visible;
    for (const CEffectControl &c : m_controls)
        if (c.Visible && c.Name != u"fraEffect")
            visible << &c;
    std::stable_sort(visible.begin(), visible.end(),
        [](const CEffectControl *a, const CEffectControl *b) { return a->Order < b->Order; });
    return visible;
}

void CEffectPages::place(const QString &name, int index, const QString &caption)
{
    CEffectControl *c = Control(name, index);
    if (!c)
        return;
    if (name != u"fraEffect") {
        c->Visible = true;
        c->Order = m_order++;
    }
    if (!caption.isNull())
        c->Caption = caption;
}

void CEffectPages::placeText(int index, const QString &label, const QString &value, const QString &unit)
{
    place(QStringLiteral("lbltxtArg"), index, label);
    place(QStringLiteral("txtArg"), index, QString());
    CEffectControl *box = Control(QStringLiteral("txtArg"), index);
    box->Unit = unit;
    if (m_showDefaults)
        box->Text = value;
}

void CEffectPages::ShowPage(int page, bool showDefaults)
{
    if (page == ColourCycleCurrentPage)
        return;
    for (CEffectControl &c : m_controls) {
        if (c.Name == u"fraEffect")
            continue;
        c.Visible = false;
        c.Enabled = true;
        c.Order = -1;
    }
    m_tabStripVisible = false;
    m_order = 0;
    m_showDefaults = showDefaults;
    declare(page);
}

void CEffectPages::declare(int page)
{
    switch (page) {
    case 0:
        declareTagPage();
        break;
    case 1:
        declareDrawing();
        break;
    case 2:
        declareKaraoke();
        break;
    case 3:
        declareTimeDifference();
        break;
    case 4:
        declareColourCycle();
        break;
    case 6:
        declareMove();
        break;
    case 7:
        declarePositionSteps();
        break;
    default: // page 5 has no controls of its own
        break;
    }
}

void CEffectPages::declareTagPage()
{
    m_tabStripVisible = true;
    if (m_showDefaults) {
        Tag.txtAccelStart = QStringLiteral("0");
        Tag.txtAccelEnd = QStringLiteral("0");
        Tag.txtAccel = QStringLiteral("1");
    }
    place(QStringLiteral("fraEffect"), -1, QStringLiteral("效果符参考"));
    place(QStringLiteral("cmdCreate"), -1, QStringLiteral("生成"));
}

void CEffectPages::declareDrawing()
{
    place(QStringLiteral("fraEffect"), -1, QStringLiteral("SSA作图"));
    place(QStringLiteral("lblSldArg"), 0, QStringLiteral("坐标比例尺"));
    place(QStringLiteral("sldArg"), 0, QString());
    CEffectControl *slider = Control(QStringLiteral("sldArg"), 0);
    place(QStringLiteral("spdArg"), 0, QString());
    CEffectControl *grid = Control(QStringLiteral("spdArg"), 0);
    grid->Spread.FontName = QStringLiteral("Arial");
    grid->Spread.ColumnHeaders = { QStringLiteral("X坐标"), QStringLiteral("Y坐标") };
    // The generator reads the start letter and the baseline as well, so they stand here.
    place(QStringLiteral("optDrawMN"), 0, QStringLiteral("m"));
    place(QStringLiteral("optDrawMN"), 1, QStringLiteral("n"));
    place(QStringLiteral("lblSSADraw"), -1, QStringLiteral("Y轴偏移量"));
    place(QStringLiteral("txtDrawYbaseline"), -1, QString());
    place(QStringLiteral("cmdCreate"), -1, QStringLiteral("生成"));
    if (m_showDefaults) {
        slider->Slider = CEffectSlider { 10, 1, 0, 0 };
        grid->Spread.Cells.clear();
        grid->Spread.setMaxRows(10);
        SetOption(QStringLiteral("optDrawMN"), 0);
        Control(QStringLiteral("txtDrawYbaseline"))->Text = QStringLiteral("0");
    }
}

void CEffectPages::declareKaraoke()
{
    place(QStringLiteral("fraEffect"), -1, QStringLiteral("卡拉OK ++"));
    place(QStringLiteral("lblrtfArg"), 0, QStringLiteral("卡拉OK"));
    place(QStringLiteral("rtfArg"), 0, QString());
    placeText(0, QStringLiteral("效果符号"), QStringLiteral("\\\\alpha&HFF&"), QString());
    place(QStringLiteral("chkArg"), 0, QStringLiteral("保留卡拉OK效果"));
    place(QStringLiteral("cmdCreate"), -1, QStringLiteral("生成"));
}

void CEffectPages::declareTimeDifference()
{
    place(QStringLiteral("optArg"), 0, QStringLiteral("根据1,2行生成差分"));
    place(QStringLiteral("optArg"), 1, QStringLiteral("根据1,2,3行生成差分"));
    place(QStringLiteral("optArg"), 2, QStringLiteral("根据第一行和最后一行生成差分"));
    place(QStringLiteral("fraEffect"), -1, QStringLiteral("时间轴差分"));
    placeText(0, QStringLiteral("生成行数"), QStringLiteral("10"), QString());
    place(QStringLiteral("lblspdArg"), 0, QStringLiteral("时间轴"));
    place(QStringLiteral("spdArg"), 0, QString());
    CEffectControl *grid = Control(QStringLiteral("spdArg"), 0);
    grid->Spread.FontName = QStringLiteral("Arial");
    grid->Spread.ColumnHeaders = { QStringLiteral("开始时间"), QStringLiteral("结束时间") };
    place(QStringLiteral("cmdCreate"), -1, QStringLiteral("生成"));
    if (m_showDefaults) {
        SetOption(QStringLiteral("optArg"), 0);
        grid->Spread.Cells.clear();
        grid->Spread.setMaxRows(3);
        grid->Spread.setText(1, 1, QStringLiteral("0:00:00.00"));
        grid->Spread.setText(1, 2, QStringLiteral("0:00:00.00"));
    }
}

void CEffectPages::declareColourCycle()
{
    place(QStringLiteral("optArg"), 0, QStringLiteral("渐进"));
    place(QStringLiteral("optArg"), 1, QStringLiteral("渐退"));
    place(QStringLiteral("fraEffect"), -1, QStringLiteral("颜色循环渐进"));
    place(QStringLiteral("lblrtfArg"), 0, QStringLiteral("文字列"));
    place(QStringLiteral("rtfArg"), 0, QString());
    if (m_showDefaults) {
        SetOption(QStringLiteral("optArg"), 0);
        Control(QStringLiteral("rtfArg"), 0)->Text = QStringLiteral("1234567890");
    }
    placeText(0, QStringLiteral("开始时间偏移量"), QStringLiteral("0"), Seconds);
    placeText(1, QStringLiteral("总时间长度"), QStringLiteral("20"), Seconds);
    placeText(2, QStringLiteral("一个颜色循环的时间"), QStringLiteral("1"), Seconds);
    placeText(3, QStringLiteral("一个颜色循环的字数"), QStringLiteral("5"), QStringLiteral("* 2   个"));
    placeText(4, QStringLiteral("开始X坐标"), QStringLiteral("200"), Pixels);
    placeText(5, QStringLiteral("开始Y坐标"), QStringLiteral("100"), Pixels);
    placeText(6, QStringLiteral("水平字间距"), QStringLiteral("20"), Pixels);
    placeText(7, QStringLiteral("垂直字间距"), QStringLiteral("0"), Pixels);
    placeText(8, QStringLiteral("开始时间偏移:"), QStringLiteral("0"), Millis);
    placeText(9, QStringLiteral("结束时间偏移:"), QStringLiteral("0"), Millis);
    placeText(10, QStringLiteral("加速度"), QStringLiteral("1"), QString());
    place(QStringLiteral("lblpicArg"), 0, QStringLiteral("开始颜色"));
    place(QStringLiteral("picArg"), 0, QString());
    place(QStringLiteral("lblpicArg"), 1, QStringLiteral("结束颜色"));
    place(QStringLiteral("picArg"), 1, QString());
    place(QStringLiteral("cmdCreate"), -1, QStringLiteral("生成"));
}

void CEffectPages::declareMove()
{
    place(QStringLiteral("fraEffect"), -1, QStringLiteral("移动"));
    place(QStringLiteral("lblrtfArg"), 0, QStringLiteral("文字列"));
    place(QStringLiteral("rtfArg"), 0, QString());
    if (m_showDefaults)
        Control(QStringLiteral("rtfArg"), 0)->Text = basEffectExplain::MoveSampleText();
    placeText(0, QStringLiteral("开始X坐标"), QStringLiteral("10"), Pixels);
    placeText(1, QStringLiteral("开始Y坐标"), QStringLiteral("10"), Pixels);
    placeText(2, QStringLiteral("结束X坐标"), QStringLiteral("300"), Pixels);
    placeText(3, QStringLiteral("结束Y坐标"), QStringLiteral("300"), Pixels);
    placeText(4, QStringLiteral("水平字间距"), QStringLiteral("0"), Pixels);
    placeText(5, QStringLiteral("垂直字间距"), QStringLiteral("0"), Pixels);
    placeText(6, QStringLiteral("开始时间偏移:"), QStringLiteral("0"), Millis);
    placeText(7, QStringLiteral("结束时间偏移:"), QStringLiteral("0"), Millis);
    placeText(8, QStringLiteral("全长度"), QStringLiteral("10"), Seconds);
    // One box more, declared twice over: it ends up as the acceleration box.
    placeText(9, QStringLiteral("结束时间偏移:"), QStringLiteral("0"), Millis);
    placeText(9, QStringLiteral("加速度"), QStringLiteral("1"), QString());
    place(QStringLiteral("lblSldArg"), 0, QStringLiteral("淡入淡出范围选择"));
    place(QStringLiteral("sldArg"), 0, QString());
    if (m_showDefaults)
        Control(QStringLiteral("sldArg"), 0)->Slider = CEffectSlider { 100, 0, 0, 0 };
    place(QStringLiteral("cmdCreate"), -1, QStringLiteral("生成"));
}

void CEffectPages::declarePositionSteps()
{
    place(QStringLiteral("fraEffect"), -1, QStringLiteral("位置差分"));
    place(QStringLiteral("lblrtfArg"), 0, QStringLiteral("文字列"));
    place(QStringLiteral("rtfArg"), 0, QString());
    placeText(0, QStringLiteral("开始X坐标"), QStringLiteral("100"), Pixels);
    placeText(1, QStringLiteral("开始Y坐标"), QStringLiteral("100"), Pixels);
    placeText(2, QStringLiteral("X间距"), QStringLiteral("0"), Pixels);
    placeText(3, QStringLiteral("Y间距"), QStringLiteral("20"), Pixels);
    place(QStringLiteral("cmdCreate"), -1, QStringLiteral("生成"));
}

void CEffectPages::BackupCtrl(int page, bool firstTime)
{
    if (page < 0 || page >= PageCount || page == ColourCycleCurrentPage)
        return;
    ShowPage(page, firstTime);
    QList<BackupRow> &rows = m_backup[page];
    int row = 0;
    for (const CEffectControl &c : m_controls) {
        if (firstTime) {
            BackupRow r;
            r.Name = c.Name;
            if (c.Index >= 0)
                r.Index = c.Index;
            rows.append(r);
        }
        if (row >= rows.size())
            break;
        QVariant &value = rows[row++].Value;
        const QString &type = c.TypeName;
        if (type == u"TextBox" || type == u"RichTextBox")
            value = c.Text;
        else if (type == u"Label" || type == u"Frame" || type == u"CommandButton")
            value = c.Caption;
        else if (type == u"PictureBox")
            value = c.BackColor;
        else if (type == u"OptionButton")
            value = c.Value;
        else if (type == u"vaSpread")
            value = spreadValue(c.Spread);
        else if (type == u"Slider")
            value = sliderValue(c.Slider);
        // A check box is looked for as "ChechBox" and so never matches: its state is
        // never backed up, and it keeps whatever the user last made of it.
    }
}

void CEffectPages::RestoreCtrl(int page)
{
    if (page < 0 || page >= PageCount || page == ColourCycleCurrentPage)
        return;
    ShowPage(page, false);
    for (const BackupRow &r : std::as_const(m_backup[page])) {
        if (r.Name.isEmpty() || !r.Value.isValid())
            continue;
        CEffectControl *c = Control(r.Name, r.Index.isValid() ? r.Index.toInt() : -1);
        if (!c)
            continue;
        const QString &type = c->TypeName;
        if (type == u"TextBox" || type == u"RichTextBox")
            c->Text = r.Value.toString();
        else if (type == u"Label" || type == u"Frame" || type == u"CommandButton")
            c->Caption = r.Value.toString();
        else if (type == u"PictureBox")
            c->BackColor = r.Value.toLongLong();
        else if (type == u"OptionButton") {
            if (r.Value.toBool())
                SetOption(c->Name, c->Index);
            else
                c->Value = false;
        } else if (type == u"vaSpread")
            setSpread(c->Spread, r.Value);
        else if (type == u"Slider")
            setSlider(c->Slider, r.Value);
    }
}

void CEffectPages::Load()
{
    for (int page = 0; page < PageCount; ++page)
        BackupCtrl(page, true);
    m_page = 0;
    RestoreCtrl(0);
    SelectTab(m_tab);
}

void CEffectPages::SelectPage(int page)
{
    if (page < 0 || page >= PageCount)
        return;
    BackupCtrl(m_page, false);
    m_page = page;
    RestoreCtrl(page);
}

void CEffectPages::SelectTab(int tab)
{
    m_tab = tab;
    AccelEnabled(basEffectTag::AccelFrameEnabled(tab));
}

QString CEffectPages::Explanation() const
{
    return basEffectExplain::ExplainPage(m_page, m_tab);
}

CEffectArgs CEffectPages::Args() const
{
    CEffectArgs args;
    args.rtfArg = Control(QStringLiteral("rtfArg"), 0)->Text;
    for (int i = 0; i < CEffectArgs::TextBoxCount; ++i)
        args.txtArg[i] = Control(QStringLiteral("txtArg"), i)->Text;
    for (int i = 0; i < 2; ++i)
        args.picArg[i] = Control(QStringLiteral("picArg"), i)->BackColor;
    args.optArg = -1;
    for (int i = 0; i < 3; ++i)
        if (Control(QStringLiteral("optArg"), i)->Value) {
            args.optArg = i;
            break;
        }
    args.chkArg = Control(QStringLiteral("chkArg"), 0)->Value;
    args.optDrawMN = Control(QStringLiteral("optDrawMN"), 0)->Value ? 0 : 1;
    args.txtDrawYbaseline = Control(QStringLiteral("txtDrawYbaseline"))->Text;
    args.sldArg = Control(QStringLiteral("sldArg"), 0)->Slider;
    args.spdArg = Control(QStringLiteral("spdArg"), 0)->Spread;
    return args;
}

void CEffectPages::PosSelected(const QString &focusKey, int x, int y)
{
    int pair = -1; // the box that takes x; the next one takes y
    if (m_page == 6 || m_page == 7) {
        if (focusKey == u"txtArg(0)" || focusKey == u"txtArg(1)")
            pair = 0;
        else if (m_page == 6 && (focusKey == u"txtArg(2)" || focusKey == u"txtArg(3)"))
            pair = 2;
    }
    if (pair < 0)
        return;
    Control(QStringLiteral("txtArg"), pair)->Text = QString::number(x);
    Control(QStringLiteral("txtArg"), pair + 1)->Text = QString::number(y);
}

void CEffectPages::StartPosSelected(const QString &focusKey, int x, int y)
{
    m_dragX = x;
    m_dragY = y;
    m_dragging = true;
    PosSelected(focusKey, x, y);
}

void CEffectPages::ChangePosSelected(const QString &focusKey, int x, int y)
{
    if (!m_dragging)
        return;
    const int first = m_page == 6 ? 4 : m_page == 7 ? 2 : -1;
    if (first < 0)
        return;
    for (int box = first; box <= first + 1; ++box) {
        if (focusKey != QStringLiteral("txtArg(%1)").arg(box))
            continue;
        const double dx = double(x) - m_dragX;
        const double dy = double(y) - m_dragY;
        Control(QStringLiteral("txtArg"), box)->Text
            = basConvert::CStr(qint64(basConvert::CLng(std::sqrt(dx * dx + dy * dy))));
    }
}
