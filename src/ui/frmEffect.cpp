#include "ui/frmEffect.h"

#include "core/CHotKeys.h"
#include "core/CSpread.h"
#include "core/IPlayerWindow.h"
#include "core/IPrompt.h"
#include "core/basMain.h"
#include "core/basMessage.h"
#include "core/basTime.h"
#include "effects/basEffectTag.h"
#include "formats/CTiming.h"
#include "ui/CSelectionSlider.h"
#include "ui/CSpreadView.h"
#include "ui/frmPlayer.h"
#include "ui/frmTiming.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QSlider>
#include <QSplitter>
#include <QTabWidget>
#include <QTextCursor>
#include <QTextEdit>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

const QString KeyProperty = QStringLiteral("EffectKey");

QString ArrayName(const char *name, int index)
{
    return QString::fromLatin1(name) + u'(' + QString::number(index) + u')';
}

// Text boxes show CR LF as one line break.
QString ToBox(QString text)
{
    return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

void ShowColour(QPushButton *box, qint64 colour)
{
    box->setStyleSheet(QStringLiteral("background-color: %1; border: 1px solid gray")
                           .arg(CSpread::ToQColor(quint32(colour)).name()));
}

// The controls of one tab of the tag page, one row after another: a caption, its box
// and, for a number, what it counts in.
class TagTab
{
public:
    TagTab(QTabWidget *tabs, const QString &caption)
        : m_page(new QWidget(tabs))
        , m_grid(new QGridLayout(m_page))
    {
        m_grid->setColumnStretch(1, 1);
        tabs->addTab(m_page, caption);
    }
    ~TagTab() { m_grid->setRowStretch(m_row, 1); }
    TagTab(const TagTab &) = delete;
    TagTab &operator=(const TagTab &) = delete;

    QWidget *Page() const { return m_page; }
    // A caption in the first column of a new row; the row's other widgets follow it.
    void Caption(const QString &text) { m_grid->addWidget(new QLabel(text, m_page), m_row, 0); }
    void Add(QWidget *widget, int column = 1, int span = 1)
    {
        m_grid->addWidget(widget, m_row, column, 1, span);
    }
    void Next() { ++m_row; }

    // A box bound to a text of the page's values.
    QLineEdit *Text(const QString &name, const QString &caption, QString *value)
    {
        Caption(caption);
        auto *box = new QLineEdit(*value, m_page);
        box->setObjectName(name);
        box->setMaximumWidth(120);
        QObject::connect(box, &QLineEdit::textEdited, box, [value](const QString &text) { *value = text; });
        Add(box);
        Next();
        return box;
    }
    // Option buttons bound to a choice of the page's values: button i stands for
    // values[i]; `columns` buttons a row.
    void Options(
        const char *name, const QStringList &captions, const QList<int> &values, int *value, int columns = 1)
    {
        auto *group = new QButtonGroup(m_page);
        for (int i = 0; i < captions.size(); ++i) {
            auto *option = new QRadioButton(captions[i], m_page);
            option->setObjectName(ArrayName(name, i));
            option->setChecked(values[i] == *value);
            group->addButton(option, i);
            m_grid->addWidget(option, m_row + i / columns, i % columns, 1, 1);
        }
        m_row += int((captions.size() + columns - 1) / columns);
        QObject::connect(group, &QButtonGroup::idToggled, m_page, [value, values](int id, bool on) {
            if (on)
                *value = values[id];
        });
    }
    QCheckBox *Check(const QString &name, const QString &caption, bool *value)
    {
        auto *box = new QCheckBox(caption, m_page);
        box->setObjectName(name);
        box->setChecked(*value);
        QObject::connect(box, &QCheckBox::toggled, box, [value](bool on) { *value = on; });
        return box;
    }

private:
    QWidget *m_page;
    QGridLayout *m_grid;
    int m_row = 0;
};

} // namespace

frmEffect::frmEffect(QWidget *parent)
    : QWidget(parent, Qt::Tool)
{
    setObjectName(QStringLiteral("frmEffect"));
    setWindowTitle(Msg(QStringLiteral("TIMING_BUTTON_TIP_E00")));
    fraEffect = new QGroupBox(this);
    fraEffect->setObjectName(QStringLiteral("fraEffect"));
    m_model.Load();
    buildPool();
    buildTagPage();
    buildResult();
    buildLayout();
    showPage();
    showExplanation();
    showHistory();
}

frmEffect::~frmEffect()
{
    for (const QMetaObject::Connection &link : m_playerLinks)
        disconnect(link);
    // The controls write into the model: they go first, while it still stands.
    spdArg->SetSpread(nullptr);
    qDeleteAll(findChildren<QWidget *>(Qt::FindDirectChildrenOnly));
}

void frmEffect::Init(frmTiming &timingForm)
{
    m_model.TimingGrid = &timingForm.Grid();
    setPlayerWindow(timingForm.Document() ? timingForm.Document()->PlayerWindow() : nullptr);
    setWindowTitle(
        Msg(QStringLiteral("TIMING_BUTTON_TIP_E00")) + QStringLiteral(" - ") + timingForm.windowTitle());
}

void frmEffect::setPlayerWindow(IPlayerWindow *player)
{
    for (const QMetaObject::Connection &link : m_playerLinks)
        disconnect(link);
    m_playerLinks.clear();
    m_model.PlayerWindow = player;
    m_player = dynamic_cast<QObject *>(player);
    if (!m_player)
        return;
    m_playerLinks.push_back(
        connect(m_player, &QObject::destroyed, this, [this] { m_model.PlayerWindow = nullptr; }));
    if (auto *window = qobject_cast<frmPlayer *>(m_player)) {
        m_playerLinks.push_back(
            connect(window, &frmPlayer::PosSelected, this, &frmEffect::PlayerWindow_PosSelected));
        m_playerLinks.push_back(
            connect(window, &frmPlayer::StartPosSelected, this, &frmEffect::PlayerWindow_StartPosSelected));
        m_playerLinks.push_back(
            connect(window, &frmPlayer::ChangePosSelected, this, &frmEffect::PlayerWindow_ChangePosSelected));
        m_playerLinks.push_back(
            connect(window, &frmPlayer::EndPosSelected, this, &frmEffect::PlayerWindow_EndPosSelected));
    }
}

QWidget *frmEffect::Control(const QString &key) const
{
    return findChild<QWidget *>(key);
}

// ---- building ------------------------------------------------------------------------------

void frmEffect::buildPool()
{
    auto *area = new QWidget;
    area->setObjectName(QStringLiteral("fraEffectArea"));
    m_poolLayout = new QGridLayout(area);
    m_poolLayout->setColumnStretch(1, 1);
    const std::vector<CEffectControl> &controls = m_model.Pages.Controls();
    m_pool.assign(controls.size(), nullptr);
    m_units.assign(controls.size(), nullptr);
    QHash<QString, QButtonGroup *> groups;
    for (size_t i = 0; i < controls.size(); ++i) {
        CEffectControl *c = m_model.Pages.Control(controls[i].Name, controls[i].Index);
        const QString &type = c->TypeName;
        QWidget *w = nullptr;
        if (type == u"Frame") {
            m_pool[i] = fraEffect;
            continue;
        }
        if (type == u"TextBox") {
            auto *box = new QLineEdit(area);
            box->setMaximumWidth(160);
            connect(box, &QLineEdit::textEdited, this, [c](const QString &text) { c->Text = text; });
            if (c->Index >= 0)
                m_units[i] = new QLabel(area);
            w = box;
        } else if (type == u"Label") {
            w = new QLabel(area);
        } else if (type == u"RichTextBox") {
            auto *box = new QPlainTextEdit(area);
            box->setMaximumHeight(70);
            connect(box, &QPlainTextEdit::textChanged, this, [this, c, box] {
                if (!m_showing)
                    c->Text = box->toPlainText();
            });
            w = box;
        } else if (type == u"PictureBox") {
            auto *box = new QPushButton(area);
            box->setFixedSize(60, 22);
            box->setToolTip(Msg(QStringLiteral("VELMAR_EFFECT_109")));
            const int index = c->Index;
            connect(box, &QPushButton::clicked, this, [this, index] { colourClicked(index); });
            w = box;
        } else if (type == u"OptionButton") {
            auto *option = new QRadioButton(area);
            QButtonGroup *&group = groups[c->Name];
            if (!group) {
                group = new QButtonGroup(this);
                m_optionGroups.push_back(group);
            }
            group->addButton(option);
            connect(option, &QRadioButton::toggled, this, [this, c](bool on) {
                if (on && !m_showing)
                    m_model.Pages.SetOption(c->Name, c->Index);
            });
            w = option;
        } else if (type == u"CheckBox") {
            auto *box = new QCheckBox(area);
            connect(box, &QCheckBox::toggled, this, [this, c](bool on) {
                if (!m_showing)
                    c->Value = on;
            });
            w = box;
        } else if (type == u"CommandButton") {
            cmdCreate = new QPushButton(area);
            connect(cmdCreate, &QPushButton::clicked, this, &frmEffect::create);
            w = cmdCreate;
        } else if (type == u"Slider") {
            auto *slider = new CSelectionSlider(area);
            connect(slider, &QSlider::valueChanged, this, [this, c](int value) {
                if (!m_showing)
                    c->Slider.Value = value;
            });
            connect(
                slider, &CSelectionSlider::RangeSelected, this, [c, slider](int pressedAt, int releasedAt) {
                    c->Slider.SelectRange(pressedAt, releasedAt);
                    slider->setSelection(c->Slider.SelStart, c->Slider.SelLength);
                });
            w = slider;
        } else if (type == u"vaSpread") {
            spdArg = new CSpreadView(area);
            spdArg->SetSpread(&m_model.spdArg());
            spdArg->setMinimumHeight(160);
            spdArg->installEventFilter(this);
            connect(spdArg, &CSpreadView::EditorOpened, this,
                [this](QWidget *editor) { editor->installEventFilter(this); });
            w = spdArg;
        }
        if (!w)
            continue;
        w->setObjectName(c->Key());
        w->setProperty(KeyProperty.toLatin1().constData(), c->Key());
        w->hide();
        m_pool[i] = w;
    }
    if (spdArg && HotKeys)
        spdArg->setToolTip(Msg(QStringLiteral("VELMAR_EFFECT_111"))
                               .arg(KeyCodeToName(HotKeys->HOTKEY_TimingTime()),
                                   KeyCodeToName(HotKeys->HOTKEY_TimingStartTime()),
                                   KeyCodeToName(HotKeys->HOTKEY_TimingEndTime())));

    tabEffectSample = new QTabWidget(fraEffect);
    tabEffectSample->setObjectName(QStringLiteral("tabEffectSample"));
    tabEffectSample->setUsesScrollButtons(true);
    fraAccel = new QGroupBox(QStringLiteral("加速度"), fraEffect);
    fraAccel->setObjectName(QStringLiteral("fraAccel"));
    auto *scroll = new QScrollArea(fraEffect);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidget(area);
    auto *frame = new QVBoxLayout(fraEffect);
    frame->addWidget(tabEffectSample);
    frame->addWidget(fraAccel);
    frame->addWidget(scroll, 1);
}

void frmEffect::buildTagPage()
{
    CTagPage &tag = m_model.Pages.Tag;
    QTabWidget *tabs = tabEffectSample;
    const auto caption = [](int tab) { return basEffectTag::TagCaption(tab); };
    const QList<int> onOff { 0, 1 };
    const auto onOffTab = [&](int number, const char *name, const QString &what, int *value) {
        TagTab t(tabs, caption(number));
        t.Options(name, { QStringLiteral("设置") + what, QStringLiteral("取消") + what }, onOff, value);
    };

    {
        TagTab t(tabs, caption(0));
    }
    {
        TagTab t(tabs, caption(1));
        t.Options("optColor",
            { QStringLiteral("\\1c 第一颜色"), QStringLiteral("\\2c 第二颜色"),
                QStringLiteral("\\3c 边框颜色"), QStringLiteral("\\4c 背景颜色"),
                QStringLiteral("\\c 第一颜色") },
            { 0, 1, 2, 3, -1 }, &tag.optColor, 3);
        t.Options("optAlpha",
            { QStringLiteral("\\1a 第一颜色透明度"), QStringLiteral("\\2a 第二颜色透明度"),
                QStringLiteral("\\3a 边框颜色透明度"), QStringLiteral("\\4a 背景颜色透明度"),
                QStringLiteral("\\alpha 全部颜色的透明度") },
            { 0, 1, 2, 3, -1 }, &tag.optAlpha, 3);
        t.Caption(Msg(QStringLiteral("VELMAR_EFFECT_106")));
        auto *alpha = new QSlider(Qt::Horizontal, t.Page());
        alpha->setObjectName(QStringLiteral("sldAlpha"));
        alpha->setRange(0, 255);
        alpha->setValue(tag.sldAlpha);
        auto *alphaText = new QLabel(t.Page());
        const auto showAlpha = [alphaText](int value) {
            alphaText->setText(QStringLiteral("&H%1").arg(value, 2, 16, QChar(u'0')).toUpper());
        };
        showAlpha(tag.sldAlpha);
        connect(alpha, &QSlider::valueChanged, this, [&tag, showAlpha](int value) {
            tag.sldAlpha = value;
            showAlpha(value);
        });
        t.Add(alpha);
        t.Add(alphaText, 2);
        t.Next();
        t.Caption(caption(1));
        auto *colour = new QPushButton(t.Page());
        colour->setObjectName(QStringLiteral("picColor"));
        colour->setFixedSize(60, 22);
        colour->setToolTip(Msg(QStringLiteral("VELMAR_EFFECT_109")));
        ShowColour(colour, tag.picColor);
        connect(colour, &QPushButton::clicked, this, [&tag, colour] {
            if (const std::optional<qint64> chosen = Prompt().ChooseColour(tag.picColor)) {
                tag.picColor = *chosen;
                ShowColour(colour, *chosen);
            }
        });
        t.Add(colour);
        t.Next();
    }
    {
        TagTab t(tabs, caption(2));
        auto *fonts = new QListWidget(t.Page());
        fonts->setObjectName(QStringLiteral("lstFontName"));
        fonts->addItems(QFontDatabase::families());
        const QList<QListWidgetItem *> current = fonts->findItems(tag.lstFontName, Qt::MatchExactly);
        if (!current.isEmpty())
            fonts->setCurrentItem(current.first());
        connect(fonts, &QListWidget::currentTextChanged, this, [&tag](const QString &name) {
            if (!name.isEmpty())
                tag.lstFontName = name;
        });
        t.Add(fonts, 0, 3);
        t.Next();
    }
    {
        TagTab t(tabs, caption(3));
        t.Text(QStringLiteral("txtFontSize"), QStringLiteral("字体大小"), &tag.txtFontSize);
    }
    onOffTab(4, "optBold", QStringLiteral("粗体"), &tag.optBold);
    onOffTab(5, "optItalic", QStringLiteral("斜体"), &tag.optItalic);
    onOffTab(6, "optUnderline", QStringLiteral("下划线"), &tag.optUnderline);
    onOffTab(7, "optStrikeThru", QStringLiteral("中划线"), &tag.optStrikeThru);
    {
        // The positions as a keypad shows them: 7 8 9 above, 1 2 3 below.
        TagTab t(tabs, caption(8));
        QStringList keypad;
        QList<int> positions;
        for (int number : { 7, 8, 9, 4, 5, 6, 1, 2, 3 }) {
            keypad << QString::number(number);
            positions << number - 1;
        }
        t.Options("optAlignment", keypad, positions, &tag.optAlignment, 3);
        t.Options("optAlia", { QStringLiteral("\\an"), QStringLiteral("\\a") }, onOff, &tag.optAlia, 2);
    }
    onOffTab(9, "optBlur", QStringLiteral("边界弱化"), &tag.optBlur);
    {
        TagTab t(tabs, caption(10));
        t.Text(QStringLiteral("txtShadow"), QStringLiteral("影子宽度"), &tag.txtShadow);
    }
    {
        TagTab t(tabs, caption(11));
        t.Text(QStringLiteral("txtBorder"), QStringLiteral("边框宽度"), &tag.txtBorder);
    }
    {
        TagTab t(tabs, caption(12));
        t.Text(QStringLiteral("txtDistance"), QStringLiteral("间距宽度"), &tag.txtDistance);
    }
    {
        TagTab t(tabs, caption(13));
        const QStringList axes { QStringLiteral("绕X轴旋转(前后翻转,180度为倒立)"),
            QStringLiteral("绕Y轴旋转(左右翻转,180度为镜面翻转)"),
            QStringLiteral("绕Z轴旋转(钟面逆时针翻转,180度为倒立)") };
        const QStringList names { QStringLiteral("\\frx"), QStringLiteral("\\fry"), QStringLiteral("\\frz") };
        for (int i = 0; i < 6; ++i) {
            if (i == 3) {
                t.Caption(Msg(QStringLiteral("VELMAR_EFFECT_107")));
                t.Next();
            }
            t.Add(
                t.Check(ArrayName("chkRotate", i), i < 3 ? axes[i] : names[i - 3], &tag.chkRotate[size_t(i)]),
                0);
            auto *angle = new QLineEdit(tag.txtRotateAngle[size_t(i)], t.Page());
            angle->setObjectName(ArrayName("txtRotateAngle", i));
            angle->setMaximumWidth(80);
            QString *value = &tag.txtRotateAngle[size_t(i)];
            connect(angle, &QLineEdit::textEdited, this, [value](const QString &text) { *value = text; });
            t.Add(angle);
            t.Next();
        }
    }
    {
        TagTab t(tabs, caption(14));
        t.Text(ArrayName("txtScale", 0), QStringLiteral("宽度伸缩"), &tag.txtScale[0]);
        t.Text(ArrayName("txtScale", 1), QStringLiteral("高度伸缩"), &tag.txtScale[1]);
    }
    {
        TagTab t(tabs, caption(15));
        t.Options(
            "optFading", { QStringLiteral("\\fade"), QStringLiteral("\\fad") }, onOff, &tag.optFading, 2);
        t.Text(ArrayName("txtAlpha", 0), QStringLiteral("a1: 时间点1以前的透明度"), &tag.txtAlpha[0]);
        t.Text(ArrayName("txtAlpha", 1), QStringLiteral("a2"), &tag.txtAlpha[1]);
        t.Text(ArrayName("txtAlpha", 2), QStringLiteral("a3"), &tag.txtAlpha[2]);
        for (int i = 0; i < 4; ++i)
            t.Text(ArrayName("txtFadingTime", i), QStringLiteral("t%1: 时间点偏移量%1").arg(i + 1),
                &tag.txtFadingTime[size_t(i)]);
        t.Text(ArrayName("txtFadingTime", 4), QStringLiteral("t5: 淡入的时间长度"), &tag.txtFadingTime[4]);
        t.Text(ArrayName("txtFadingTime", 5), QStringLiteral("t6: 淡出的时间长度"), &tag.txtFadingTime[5]);
    }
    {
        TagTab t(tabs, caption(16));
        t.Text(QStringLiteral("txtKaraOK"), QStringLiteral("文字变色所用的时间"), &tag.txtKaraOK);
    }
    {
        TagTab t(tabs, caption(17));
        t.Text(ArrayName("txtMoveStart", 0), QStringLiteral("开始点X坐标"), &tag.txtMoveStart[0]);
        t.Text(ArrayName("txtMoveStart", 1), QStringLiteral("开始点Y坐标"), &tag.txtMoveStart[1]);
        t.Text(ArrayName("txtMoveEnd", 0), QStringLiteral("结束点X坐标"), &tag.txtMoveEnd[0]);
        t.Text(ArrayName("txtMoveEnd", 1), QStringLiteral("结束点Y坐标"), &tag.txtMoveEnd[1]);
        t.Text(ArrayName("txtMoveTime", 0), QStringLiteral("移动开始时间的偏移量(毫秒)(可选)"),
            &tag.txtMoveTime[0]);
        t.Text(ArrayName("txtMoveTime", 1), QStringLiteral("移动结束时间的偏移量(毫秒)(可选)"),
            &tag.txtMoveTime[1]);
    }
    {
        TagTab t(tabs, caption(18));
        t.Text(QStringLiteral("txtOrgX"), QStringLiteral("X坐标"), &tag.txtOrgX);
        t.Text(QStringLiteral("txtOrgY"), QStringLiteral("Y坐标"), &tag.txtOrgY);
    }
    {
        TagTab t(tabs, caption(19));
        t.Text(QStringLiteral("txtSiteX"), QStringLiteral("X坐标"), &tag.txtSiteX);
        t.Text(QStringLiteral("txtSiteY"), QStringLiteral("Y坐标"), &tag.txtSiteY);
    }
    {
        TagTab t(tabs, caption(20));
        t.Text(ArrayName("txtClipStart", 0), QStringLiteral("x1"), &tag.txtClipStart[0]);
        t.Text(ArrayName("txtClipStart", 1), QStringLiteral("y1"), &tag.txtClipStart[1]);
        t.Text(ArrayName("txtClipEnd", 0), QStringLiteral("x2"), &tag.txtClipEnd[0]);
        t.Text(ArrayName("txtClipEnd", 1), QStringLiteral("y2"), &tag.txtClipEnd[1]);
    }
    {
        TagTab t(tabs, caption(21));
        t.Options("optWrap",
            { QStringLiteral("\\q0"), QStringLiteral("\\q1"), QStringLiteral("\\q2"),
                QStringLiteral("\\q3") },
            { 0, 1, 2, 3 }, &tag.optWrap, 4);
    }
    {
        TagTab t(tabs, caption(22));
        t.Text(QStringLiteral("txtEncode"), QStringLiteral("字符集号码"), &tag.txtEncode);
    }
    {
        TagTab t(tabs, caption(23));
    }
    connect(tabEffectSample, &QTabWidget::currentChanged, this, &frmEffect::tabChanged);

    // The gradual frame under the tabs.
    auto *accel = new QGridLayout(fraAccel);
    auto *chkAccel = new QCheckBox(QStringLiteral("渐变"), fraAccel);
    chkAccel->setObjectName(QStringLiteral("chkAccel"));
    chkAccel->setChecked(tag.chkAccel);
    connect(chkAccel, &QCheckBox::toggled, this, [&tag](bool on) { tag.chkAccel = on; });
    accel->addWidget(chkAccel, 0, 0);
    const struct
    {
        const char *Name;
        const char16_t *Caption;
        QString *Value;
        const char16_t *Unit;
    } boxes[] = {
        { "txtAccelStart", u"开始时间偏移量", &tag.txtAccelStart, u"ms" },
        { "txtAccelEnd", u"结束时间偏移量", &tag.txtAccelEnd, u"ms" },
        { "txtAccel", u"加速度", &tag.txtAccel, u"" },
    };
    int column = 1;
    for (const auto &b : boxes) {
        accel->addWidget(new QLabel(QString::fromUtf16(b.Caption), fraAccel), 0, column++);
        auto *box = new QLineEdit(*b.Value, fraAccel);
        box->setObjectName(QString::fromLatin1(b.Name));
        box->setMaximumWidth(70);
        QString *value = b.Value;
        connect(box, &QLineEdit::textEdited, this, [value](const QString &text) { *value = text; });
        accel->addWidget(box, 0, column++);
        accel->addWidget(new QLabel(QString::fromUtf16(b.Unit), fraAccel), 0, column++);
    }
    accel->setColumnStretch(column, 1);
}

void frmEffect::buildResult()
{
    rtfExplain = new QTextEdit(this);
    rtfExplain->setObjectName(QStringLiteral("rtfExplain"));
    rtfExplain->setReadOnly(true);
    rtfExplain->setLineWrapMode(QTextEdit::NoWrap);
    rtfResult = new QPlainTextEdit(this);
    rtfResult->setObjectName(QStringLiteral("rtfResult"));
    rtfResult->setLineWrapMode(QPlainTextEdit::NoWrap);
    connect(rtfResult, &QPlainTextEdit::textChanged, this, [this] {
        if (m_showing)
            return;
        m_model.ResultEdited();
        showHistory();
    });
    const auto button = [this](const char *name, const char *key) {
        auto *b = new QPushButton(Msg(QString::fromLatin1(key)), this);
        b->setObjectName(QString::fromLatin1(name));
        return b;
    };
    cmdRestore[0] = button("cmdRestore(0)", "VELMAR_EFFECT_101");
    cmdRestore[1] = button("cmdRestore(1)", "VELMAR_EFFECT_102");
    cmdClear = button("cmdClear", "VELMAR_EFFECT_103");
    cmdApply = button("cmdApply", "VELMAR_EFFECT_104");
    cmdApply->setToolTip(Msg(QStringLiteral("VELMAR_EFFECT_105")));
    connect(cmdRestore[0], &QPushButton::clicked, this, [this] { restore(true); });
    connect(cmdRestore[1], &QPushButton::clicked, this, [this] { restore(false); });
    connect(cmdClear, &QPushButton::clicked, this, &frmEffect::clear);
    connect(cmdApply, &QPushButton::clicked, this, &frmEffect::apply);
}

void frmEffect::buildLayout()
{
    trvSpecialEffect = new QTreeWidget(this);
    trvSpecialEffect->setObjectName(QStringLiteral("trvSpecialEffect"));
    trvSpecialEffect->setHeaderHidden(true);
    trvSpecialEffect->setRootIsDecorated(false);
    for (int page = 0; page < CEffectPages::PageCount; ++page) {
        auto *node = new QTreeWidgetItem(trvSpecialEffect, { CEffectWindowModel::PageCaption(page) });
        node->setData(0, Qt::UserRole, CEffectWindowModel::PageKey(page));
    }
    trvSpecialEffect->setCurrentItem(trvSpecialEffect->topLevelItem(0));
    connect(trvSpecialEffect, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem *node) {
        if (!node)
            return;
        const int page = CEffectWindowModel::PageOfKey(node->data(0, Qt::UserRole).toString());
        if (page < 0 || page == m_model.Pages.CurrentPage())
            return;
        m_model.SelectPage(page, resultText());
        showPage();
        showExplanation();
        showHistory();
    });

    auto *resultSide = new QWidget(this);
    auto *side = new QVBoxLayout(resultSide);
    side->setContentsMargins(0, 0, 0, 0);
    side->addWidget(rtfExplain, 3);
    side->addWidget(new QLabel(Msg(QStringLiteral("VELMAR_EFFECT_110")), resultSide));
    side->addWidget(rtfResult, 2);
    auto *buttons = new QHBoxLayout;
    for (QPushButton *b : { cmdRestore[0], cmdRestore[1], cmdClear })
        buttons->addWidget(b);
    buttons->addStretch(1);
    buttons->addWidget(cmdApply);
    side->addLayout(buttons);

    auto *splitter = new QSplitter(this);
    splitter->addWidget(trvSpecialEffect);
    splitter->addWidget(fraEffect);
    splitter->addWidget(resultSide);
    splitter->setStretchFactor(1, 3);
    splitter->setStretchFactor(2, 2);
    splitter->setSizes({ 160, 520, 420 });
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(splitter);
    resize(1120, 640);
}

// ---- showing the model -----------------------------------------------------------------------

// Lays the page's controls out in the order of its declaration: a caption starts a row
// and the box it names follows it; options, check boxes and the button take a row each.
void frmEffect::showPage()
{
    m_showing = true;
    setUpdatesEnabled(false);
    const std::vector<CEffectControl> &controls = m_model.Pages.Controls();
    for (size_t i = 0; i < controls.size(); ++i) {
        for (QWidget *w : { m_pool[i], static_cast<QWidget *>(m_units[i]) }) {
            if (!w || w == fraEffect)
                continue;
            m_poolLayout->removeWidget(w);
            w->hide();
        }
    }
    const bool tagPage = m_model.Pages.TabStripVisible();
    tabEffectSample->setVisible(tagPage);
    fraAccel->setVisible(tagPage);
    fraAccel->setEnabled(m_model.Pages.IsAccelEnabled());

    int row = 0;
    bool captioned = false; // a caption stands at the start of the row
    for (const CEffectControl *c : m_model.Pages.VisibleControls()) {
        const size_t i = size_t(c - controls.data());
        QWidget *w = m_pool[i];
        if (!w)
            continue;
        const QString &type = c->TypeName;
        if (type == u"Label") {
            if (captioned)
                ++row;
            m_poolLayout->addWidget(w, row, 0);
            captioned = true;
        } else if (type == u"TextBox") {
            m_poolLayout->addWidget(w, row, 1);
            if (QLabel *unit = m_units[i]) {
                m_poolLayout->addWidget(unit, row, 2);
                unit->show();
            }
            ++row;
            captioned = false;
        } else if (type == u"RichTextBox" || type == u"Slider" || type == u"PictureBox"
            || type == u"vaSpread") {
            m_poolLayout->addWidget(w, row, 1, 1, 2, type == u"PictureBox" ? Qt::AlignLeft : Qt::Alignment());
            ++row;
            captioned = false;
        } else {
            if (captioned)
                ++row;
            m_poolLayout->addWidget(
                w, row, 0, 1, 3, type == u"CommandButton" ? Qt::AlignRight : Qt::Alignment());
            ++row;
            captioned = false;
        }
        w->setEnabled(c->Enabled);
        w->show();
    }
    for (int r = 0; r < m_poolLayout->rowCount(); ++r)
        m_poolLayout->setRowStretch(r, 0);
    m_poolLayout->setRowStretch(row + 1, 1);
    m_showing = false;
    showValues();
    setUpdatesEnabled(true);
}

void frmEffect::showValues()
{
    m_showing = true;
    for (QButtonGroup *group : m_optionGroups)
        group->setExclusive(false);
    const std::vector<CEffectControl> &controls = m_model.Pages.Controls();
    for (size_t i = 0; i < controls.size(); ++i)
        if (m_pool[i])
            showControl(controls[i], m_pool[i]);
    for (QButtonGroup *group : m_optionGroups)
        group->setExclusive(true);
    m_showing = false;
}

void frmEffect::showControl(const CEffectControl &c, QWidget *w)
{
    const QString &type = c.TypeName;
    if (type == u"Frame") {
        fraEffect->setTitle(c.Caption);
    } else if (type == u"TextBox") {
        auto *box = static_cast<QLineEdit *>(w);
        if (box->text() != c.Text)
            box->setText(c.Text);
        const size_t i = size_t(&c - m_model.Pages.Controls().data());
        if (QLabel *unit = m_units[i])
            unit->setText(c.Unit);
    } else if (type == u"Label") {
        static_cast<QLabel *>(w)->setText(c.Caption);
    } else if (type == u"RichTextBox") {
        auto *box = static_cast<QPlainTextEdit *>(w);
        if (box->toPlainText() != c.Text)
            box->setPlainText(c.Text);
    } else if (type == u"PictureBox") {
        ShowColour(static_cast<QPushButton *>(w), c.BackColor);
    } else if (type == u"OptionButton" || type == u"CheckBox") {
        auto *button = static_cast<QAbstractButton *>(w);
        button->setText(c.Caption);
        button->setChecked(c.Value);
    } else if (type == u"CommandButton") {
        static_cast<QPushButton *>(w)->setText(c.Caption);
    } else if (type == u"Slider") {
        auto *slider = static_cast<CSelectionSlider *>(w);
        slider->setRange(0, c.Slider.Max);
        slider->setValue(c.Slider.Value);
        slider->setSelection(c.Slider.SelStart, c.Slider.SelLength);
    } else if (type == u"vaSpread") {
        if (!c.Spread.FontName.isEmpty() && spdArg->font().family() != c.Spread.FontName)
            spdArg->setFont(QFont(c.Spread.FontName));
    }
}

void frmEffect::showExplanation()
{
    rtfExplain->setPlainText(ToBox(m_model.Pages.Explanation()));
}

void frmEffect::showHistory()
{
    cmdRestore[0]->setEnabled(m_model.History.BackEnabled());
    cmdRestore[1]->setEnabled(m_model.History.ForwardEnabled());
}

// ---- the user's doing ------------------------------------------------------------------------

void frmEffect::SelectPage(int page)
{
    if (QTreeWidgetItem *node = trvSpecialEffect->topLevelItem(page))
        trvSpecialEffect->setCurrentItem(node);
}

void frmEffect::tabChanged(int tab)
{
    m_model.Pages.SelectTab(tab);
    fraAccel->setEnabled(m_model.Pages.IsAccelEnabled());
    showExplanation();
}

void frmEffect::create()
{
    const QString text = m_model.Create(resultText());
    if (!text.isEmpty()) {
        m_showing = true;
        QTextCursor caret = rtfResult->textCursor();
        caret.insertText(ToBox(text));
        rtfResult->setTextCursor(caret);
        m_showing = false;
    }
    showHistory();
}

void frmEffect::restore(bool back)
{
    const std::optional<QString> text = back ? m_model.Back(resultText()) : m_model.Forward();
    if (text)
        setResultText(*text);
    showHistory();
}

void frmEffect::clear()
{
    m_model.Clear(resultText());
    setResultText(QString());
    showHistory();
}

void frmEffect::apply()
{
    m_model.Apply(resultText());
}

void frmEffect::colourClicked(int index)
{
    CEffectControl *c = m_model.Pages.Control(QStringLiteral("picArg"), index);
    if (!c)
        return;
    if (const std::optional<qint64> chosen = Prompt().ChooseColour(c->BackColor)) {
        c->BackColor = *chosen;
        showValues();
    }
}

QString frmEffect::resultText() const
{
    return rtfResult->toPlainText().replace(u'\n', QStringLiteral("\r\n"));
}

void frmEffect::setResultText(const QString &text)
{
    m_showing = true;
    rtfResult->setPlainText(ToBox(text));
    m_showing = false;
}

QString frmEffect::focusKey() const
{
    const QWidget *focus = focusWidget();
    return focus ? focus->property(KeyProperty.toLatin1().constData()).toString() : QString();
}

// ---- the player and the time keys -----------------------------------------------------------

void frmEffect::PlayerWindow_PosSelected(int x, int y)
{
    m_model.Pages.PosSelected(focusKey(), x, y);
    showValues();
}

void frmEffect::PlayerWindow_StartPosSelected(int x, int y)
{
    m_model.Pages.StartPosSelected(focusKey(), x, y);
    showValues();
}

void frmEffect::PlayerWindow_ChangePosSelected(int x, int y)
{
    m_model.Pages.ChangePosSelected(focusKey(), x, y);
    showValues();
}

void frmEffect::PlayerWindow_EndPosSelected(int, int)
{
    m_model.Pages.EndPosSelected();
}

bool frmEffect::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && HotKeys && spdArg) {
        const int code = KeyCodeOfQtKey(static_cast<QKeyEvent *>(event)->key());
        const bool timeKey = code != 0
            && (code == HotKeys->HOTKEY_TimingTime() || code == HotKeys->HOTKEY_TimingStartTime()
                || code == HotKeys->HOTKEY_TimingEndTime());
        if (timeKey) {
            // An open editor would write its text over the time.
            spdArg->setEditMode(false);
            m_model.StampTime();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
