#include "ui/frmFileOption.h"

#include "core/IPrompt.h"
#include "formats/basFileTypes.h"
#include "translation/basRtf.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTextCursor>
#include <QTextEdit>
#include <QVBoxLayout>

#include <span>

namespace {

QButtonGroup *RadioGroup(QWidget *owner, const char *name, const QStringList &captions, QLayout *into)
{
    auto *group = new QButtonGroup(owner);
    group->setObjectName(QString::fromLatin1(name));
    for (int i = 0; i < captions.size(); ++i) {
        auto *radio = new QRadioButton(captions.at(i), owner);
        radio->setObjectName(QStringLiteral("%1_%2").arg(QString::fromLatin1(name)).arg(i));
        group->addButton(radio, i);
        into->addWidget(radio);
    }
    return group;
}

// Rich text arrives as RTF; anything else that is called rich is shown as it is.
void ShowText(QTextEdit *view, const QString &text, bool rich)
{
    if (rich && IsRtf(text) && RtfToDocument(text, *view->document()))
        return;
    view->setPlainText(text);
}

// The length of the next piece of plain text to show from `from`: about `size`
// characters, ending behind a line end where there is one.
qsizetype PieceLength(const QString &text, qsizetype from, qsizetype size)
{
    if (text.size() - from <= size)
        return text.size() - from;
    const qsizetype end = text.lastIndexOf(u'\n', from + size - 1);
    return end >= from ? end + 1 - from : size;
}

void SetGroup(QButtonGroup *group, int id, bool enabled)
{
    if (QAbstractButton *b = group->button(id))
        b->setChecked(true);
    for (QAbstractButton *b : group->buttons())
        b->setEnabled(enabled);
}

// A check box of an option group: its object name, its caption, where the dialog keeps
// it, and the bit of the group's value it stands for.
struct OptionBox
{
    const char *Name;
    const char16_t *Caption;
    QCheckBox *frmFileOption::*Box;
    qint32 Bit;
};

// The boxes of one option value of the model, with how a box sets its bit and when it
// may be used. The wiring of the boxes and the refresh both read these tables.
struct OptionGroup
{
    std::span<const OptionBox> Boxes;
    QGroupBox *frmFileOption::*Frame;
    qint32 CFileOptionModel::*Value;
    void (*Set)(CFileOptionModel &model, qint32 bit, bool on);
    bool (*Usable)(const CFileOptionModel::Enabled &on, qint32 bit);
};

using F = frmFileOption;

const OptionBox timingBoxes[] = {
    { "chkTitle", u"注释", &F::chkTitle, SaveOption::Head },
    { "chkFont", u"字体", &F::chkFont, SaveOption::Styles },
    { "chkStart", u"开始时间", &F::chkStart, SaveOption::StartTime },
    { "chkEnd", u"结束时间", &F::chkEnd, SaveOption::EndTime },
    { "chkDialog", u"对白", &F::chkDialog, SaveOption::Dialog },
    { "chkDialogEffect", u"对白特效", &F::chkDialogEffect, SaveOption::DialogTags },
    { "chkOtherCol", u"其他列", &F::chkOtherCol, SaveOption::OtherColumns },
};

const OptionBox changeBoxes[] = {
    { "chkText", u"文字", &F::chkText, ChangeOption::Text },
    { "chkColor", u"颜色", &F::chkColor, ChangeOption::Color },
    { "chkFontName", u"字体名", &F::chkFontName, ChangeOption::FontName },
    { "chkFontSize", u"字号", &F::chkFontSize, ChangeOption::FontSize },
    { "chkThrough", u"删除线", &F::chkThrough, ChangeOption::Through },
    { "chkUnderline", u"下划线", &F::chkUnderline, ChangeOption::Underline },
    { "chkBold", u"粗体", &F::chkBold, ChangeOption::Bold },
    { "chkItaric", u"斜体", &F::chkItaric, ChangeOption::Italic },
    { "chkBlackWhite", u"黑白互换", &F::chkBlackWhite, ChangeOption::BlackWhite },
};

const OptionBox translateBoxes[] = {
    { "chkChangeTable", u"转换表", &F::chkChangeTable, TranslateOption::ChangeTable },
};

const OptionGroup optionGroups[] = {
    { timingBoxes, &F::fraTimingOption, &CFileOptionModel::TimingOption,
        [](CFileOptionModel &m, qint32 bit, bool on) { m.setTimingOptionBit(bit, on); },
        [](const CFileOptionModel::Enabled &on, qint32 bit) {
            return bit == SaveOption::DialogTags ? on.DialogEffect : on.TimingOptions;
        } },
    { changeBoxes, &F::fraTranslateOption, &CFileOptionModel::ChangeOption,
        [](CFileOptionModel &m, qint32 bit, bool on) { m.setChangeOptionBit(bit, on); },
        [](const CFileOptionModel::Enabled &on, qint32 bit) {
            return bit != ChangeOption::BlackWhite || on.BlackWhite;
        } },
    { translateBoxes, &F::fraTranslateOption, &CFileOptionModel::TranslateOption,
        [](CFileOptionModel &m, qint32, bool on) { m.setChangeTable(on); },
        [](const CFileOptionModel::Enabled &, qint32) { return true; } },
};

} // namespace

frmFileOption::frmFileOption(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("frmFileOption"));
    Model.Init();

    auto *typeBox = new QGroupBox(QStringLiteral("文件类型"), this);
    auto *typeLayout = new QGridLayout(typeBox);
    auto *typeColumn = new QVBoxLayout;
    QStringList types;
    for (const FileTypeRow &row : FileTypes())
        if (row.Type != ScriptType::Video)
            types << QString::fromUtf16(row.Caption);
    optFileType = RadioGroup(this, "optFileType", types, typeColumn);
    typeLayout->addLayout(typeColumn, 0, 0);
    auto *subColumn = new QVBoxLayout;
    optFileSubType = RadioGroup(
        this, "optFileSubType", { QStringLiteral("SMP 格式一"), QStringLiteral("SMP 格式二") }, subColumn);
    subColumn->addStretch(1);
    typeLayout->addLayout(subColumn, 0, 1);

    auto *codeBox = new QGroupBox(QStringLiteral("编码"), this);
    auto *codeLayout = new QHBoxLayout(codeBox);
    optCodeType = RadioGroup(this, "optCodeType",
        { QStringLiteral("系统默认"), QStringLiteral("Unicode"), QStringLiteral("ANSI"),
            QStringLiteral("UTF-8") },
        codeLayout);
    auto *modeBox = new QGroupBox(QStringLiteral("打开方式"), this);
    auto *modeLayout = new QHBoxLayout(modeBox);
    optOpenMode
        = RadioGroup(this, "optOpenMode", { QStringLiteral("替换"), QStringLiteral("追加") }, modeLayout);

    fraTimingOption = new QGroupBox(QStringLiteral("时间轴选项"), this);
    fraTranslateOption = new QGroupBox(QStringLiteral("翻译稿选项"), this);
    for (const OptionGroup &group : optionGroups) {
        auto *grid = qobject_cast<QGridLayout *>((this->*group.Frame)->layout());
        if (!grid)
            grid = new QGridLayout(this->*group.Frame);
        for (const OptionBox &option : group.Boxes) {
            auto *c = new QCheckBox(QString::fromUtf16(option.Caption), this);
            c->setObjectName(QString::fromLatin1(option.Name));
            this->*option.Box = c;
            const int at = grid->count();
            grid->addWidget(c, at / 2, at % 2);
            connect(c, &QCheckBox::toggled, this, [this, &group, bit = option.Bit](bool on) {
                if (m_refreshing)
                    return;
                group.Set(Model, bit, on);
                changed();
            });
        }
    }
    cmbTimeFormat = new QComboBox(this);
    cmbTimeFormat->setObjectName(QStringLiteral("cmbTimeFormat"));
    cmbTimeFormat->addItems(CFileOptionModel::TimeFormatItems());
    qobject_cast<QGridLayout *>(fraTimingOption->layout())->addWidget(cmbTimeFormat, 4, 0, 1, 2);
    chkDelSpace = new QCheckBox(QStringLiteral("删除空行"), this);
    chkDelSpace->setObjectName(QStringLiteral("chkDelSpace"));
    chkSpaceAsReturn = new QCheckBox(QStringLiteral("空行作为换行"), this);
    chkSpaceAsReturn->setObjectName(QStringLiteral("chkSpaceAsReturn"));
    for (auto [c, flag] : { std::pair(chkDelSpace, &CFileOptionModel::DelSpace),
             std::pair(chkSpaceAsReturn, &CFileOptionModel::SpaceAsReturn) })
        connect(c, &QCheckBox::toggled, this, [this, flag](bool on) {
            if (m_refreshing)
                return;
            Model.*flag = on;
            changed();
        });

    txtFileName = new QLineEdit(this);
    txtFileName->setObjectName(QStringLiteral("txtFileName"));
    cmdFileName = new QPushButton(QStringLiteral("..."), this);
    cmdFileName->setObjectName(QStringLiteral("cmdFileName"));
    rtbSample = new QTextEdit(this);
    rtbSample->setObjectName(QStringLiteral("rtbSample"));
    rtbSample->setReadOnly(true);
    rtfPreview = new QTextEdit(this);
    rtfPreview->setObjectName(QStringLiteral("rtfPreview"));
    rtfPreview->setReadOnly(true);
    // A long preview is shown a piece at a time: the next piece when the view reaches its
    // end.
    connect(rtfPreview->verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int value) {
        if (value >= rtfPreview->verticalScrollBar()->maximum())
            showMorePreview();
    });
    cmdOK = new QPushButton(QStringLiteral("确定"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    cmdCancel = new QPushButton(QStringLiteral("取消"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));

    auto *left = new QVBoxLayout;
    left->addWidget(typeBox);
    left->addWidget(codeBox);
    left->addWidget(modeBox);
    left->addWidget(fraTimingOption);
    left->addWidget(fraTranslateOption);
    left->addWidget(chkDelSpace);
    left->addWidget(chkSpaceAsReturn);
    left->addStretch(1);
    auto *nameRow = new QHBoxLayout;
    nameRow->addWidget(new QLabel(QStringLiteral("文件名"), this));
    nameRow->addWidget(txtFileName, 1);
    nameRow->addWidget(cmdFileName);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto *right = new QVBoxLayout;
    right->addLayout(nameRow);
    right->addWidget(new QLabel(QStringLiteral("参考例子"), this));
    right->addWidget(rtbSample, 1);
    right->addWidget(new QLabel(QStringLiteral("预览"), this));
    right->addWidget(rtfPreview, 2);
    right->addLayout(buttons);
    auto *layout = new QHBoxLayout(this);
    layout->addLayout(left);
    layout->addLayout(right, 1);
    resize(860, 600);

    connect(optFileType, &QButtonGroup::idClicked, this, [this](int id) {
        Model.ClickFileType(ScriptType(id));
        changed();
    });
    connect(optFileSubType, &QButtonGroup::idClicked, this, [this](int id) {
        Model.setSubTypeButton(id);
        Model.ClickFileType(Model.ScriptType());
        changed();
    });
    connect(optCodeType, &QButtonGroup::idClicked, this, [this](int id) {
        Model.FileCode = CFileOptionModel::FileCodeOfIndex(id);
        changed();
    });
    connect(optOpenMode, &QButtonGroup::idClicked, this, [this](int id) {
        Model.OpenMode = id;
        changed();
    });
    connect(cmbTimeFormat, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (m_refreshing)
            return;
        Model.setTimeFormat(index);
        changed();
    });
    connect(
        txtFileName, &QLineEdit::textEdited, this, [this](const QString &text) { Model.FileName = text; });
    connect(cmdFileName, &QPushButton::clicked, this, [this] {
        Model.SelectFileDialog();
        changed();
    });
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        Model.FileName = txtFileName->text();
        if (Model.Ok())
            accept();
        else
            Refresh();
    });
    connect(cmdCancel, &QPushButton::clicked, this, [this] {
        Model.Cancel();
        reject();
    });
    Refresh();
}

void frmFileOption::changed()
{
    Refresh();
}

void frmFileOption::Refresh()
{
    m_refreshing = true;
    const CFileOptionModel::Enabled &on = Model.EnabledState();
    setWindowTitle(Model.Caption());
    // A draft made into a timing document is converted by the draft's options.
    const bool timing = Model.ParentWindowType == ParentWindowType::Timing;
    fraTimingOption->setVisible(timing);
    fraTranslateOption->setVisible(!timing);
    // Each window offers the kinds it opens and saves.
    const DocumentWindowKind window = timing ? DocumentWindowKind::Timing : DocumentWindowKind::Translate;
    for (QAbstractButton *b : optFileType->buttons()) {
        const FileTypeRow *row = FileTypeOf(ScriptType(optFileType->id(b)));
        b->setVisible(row && row->Window == window);
    }
    SetGroup(optFileType, int(Model.ScriptType()), on.FileType);
    SetGroup(optFileSubType, Model.SubTypeButton(), on.FileSubType);
    SetGroup(optCodeType, CFileOptionModel::CodeTypeIndex(Model.FileCode), on.CodeType);
    SetGroup(optOpenMode, Model.OpenMode, on.OpenMode);
    for (const OptionGroup &group : optionGroups)
        for (const OptionBox &option : group.Boxes) {
            QCheckBox *c = this->*option.Box;
            c->setChecked((Model.*group.Value & option.Bit) != 0);
            c->setEnabled(group.Usable(on, option.Bit));
        }
    cmbTimeFormat->setCurrentIndex(Model.TimeFormat());
    chkDelSpace->setChecked(Model.DelSpace);
    chkDelSpace->setEnabled(on.DelSpace);
    chkSpaceAsReturn->setChecked(Model.SpaceAsReturn);
    chkSpaceAsReturn->setEnabled(on.SpaceAsReturn);
    txtFileName->setText(Model.FileName);
    txtFileName->setEnabled(on.FileName);
    cmdFileName->setEnabled(on.FileName);
    // ANSI names the code page a modern read found.
    optCodeType->button(2)->setText(Model.CodePage.isEmpty()
            ? QStringLiteral("ANSI")
            : QStringLiteral("ANSI (%1)").arg(QString::fromLatin1(Model.CodePage)));
    ShowText(rtbSample, Model.SampleText(), CFileOptionModel::SampleIsRich(Model.ScriptType()));
    showPreview();
    m_refreshing = false;
}

void frmFileOption::showPreview()
{
    // The text does not change while the dialog shows it unchanged: nothing to do.
    if (m_previewText.isSharedWith(Model.FileContent) && m_previewRich == Model.PreviewIsRich)
        return;
    m_previewText = Model.FileContent;
    m_previewRich = Model.PreviewIsRich;
    if (m_previewRich || m_previewText.size() <= PreviewPiece) {
        m_previewShown = m_previewText.size();
        ShowText(rtfPreview, m_previewText, m_previewRich);
        return;
    }
    m_previewShown = PieceLength(m_previewText, 0, PreviewPiece);
    rtfPreview->setPlainText(m_previewText.left(m_previewShown));
}

void frmFileOption::showMorePreview()
{
    if (m_previewShown >= m_previewText.size())
        return;
    const qsizetype length = PieceLength(m_previewText, m_previewShown, PreviewPiece);
    QTextCursor end(rtfPreview->document());
    end.movePosition(QTextCursor::End);
    end.insertText(m_previewText.mid(m_previewShown, length));
    m_previewShown += length;
}

bool frmFileOption::PreviewComplete() const
{
    return m_previewShown >= m_previewText.size();
}
