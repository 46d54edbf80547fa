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
#include <QTextEdit>
#include <QVBoxLayout>

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

void SetGroup(QButtonGroup *group, int id, bool enabled)
{
    if (QAbstractButton *b = group->button(id))
        b->setChecked(true);
    for (QAbstractButton *b : group->buttons())
        b->setEnabled(enabled);
}

} // namespace

QCheckBox *frmFileOption::box(const char *name, const QString &text)
{
    auto *c = new QCheckBox(text, this);
    c->setObjectName(QString::fromLatin1(name));
    connect(c, &QCheckBox::toggled, this, [this, c](bool on) {
        if (m_refreshing)
            return;
        static const QList<std::pair<const char *, qint32>> timing = {
            { "chkTitle", SaveOption::Head },
            { "chkFont", SaveOption::Styles },
            { "chkStart", SaveOption::StartTime },
            { "chkEnd", SaveOption::EndTime },
            { "chkDialog", SaveOption::Dialog },
            { "chkDialogEffect", SaveOption::DialogTags },
            { "chkOtherCol", SaveOption::OtherColumns },
        };
        static const QList<std::pair<const char *, qint32>> change = {
            { "chkText", ChangeOption::Text },
            { "chkColor", ChangeOption::Color },
            { "chkFontName", ChangeOption::FontName },
            { "chkFontSize", ChangeOption::FontSize },
            { "chkThrough", ChangeOption::Through },
            { "chkUnderline", ChangeOption::Underline },
            { "chkBold", ChangeOption::Bold },
            { "chkItaric", ChangeOption::Italic },
            { "chkBlackWhite", ChangeOption::BlackWhite },
        };
        const QString name = c->objectName();
        for (const auto &[n, bit] : timing)
            if (name == QLatin1String(n))
                Model.setTimingOptionBit(bit, on);
        for (const auto &[n, bit] : change)
            if (name == QLatin1String(n))
                Model.setChangeOptionBit(bit, on);
        if (name == QLatin1String("chkChangeTable"))
            Model.setChangeTable(on);
        if (name == QLatin1String("chkDelSpace"))
            Model.DelSpace = on;
        if (name == QLatin1String("chkSpaceAsReturn"))
            Model.SpaceAsReturn = on;
        changed();
    });
    return c;
}

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
        { QStringLiteral("系统默认"), QStringLiteral("Unicode"), QStringLiteral("ANSI") }, codeLayout);
    auto *modeBox = new QGroupBox(QStringLiteral("打开方式"), this);
    auto *modeLayout = new QHBoxLayout(modeBox);
    optOpenMode
        = RadioGroup(this, "optOpenMode", { QStringLiteral("替换"), QStringLiteral("追加") }, modeLayout);

    fraTimingOption = new QGroupBox(QStringLiteral("时间轴选项"), this);
    auto *timingLayout = new QGridLayout(fraTimingOption);
    chkTitle = box("chkTitle", QStringLiteral("注释"));
    chkFont = box("chkFont", QStringLiteral("字体"));
    chkStart = box("chkStart", QStringLiteral("开始时间"));
    chkEnd = box("chkEnd", QStringLiteral("结束时间"));
    chkDialog = box("chkDialog", QStringLiteral("对白"));
    chkDialogEffect = box("chkDialogEffect", QStringLiteral("对白特效"));
    chkOtherCol = box("chkOtherCol", QStringLiteral("其他列"));
    cmbTimeFormat = new QComboBox(this);
    cmbTimeFormat->setObjectName(QStringLiteral("cmbTimeFormat"));
    cmbTimeFormat->addItems(CFileOptionModel::TimeFormatItems());
    int i = 0;
    for (QCheckBox *c : { chkTitle, chkFont, chkStart, chkEnd, chkDialog, chkDialogEffect, chkOtherCol }) {
        timingLayout->addWidget(c, i / 2, i % 2);
        ++i;
    }
    timingLayout->addWidget(cmbTimeFormat, 4, 0, 1, 2);

    fraTranslateOption = new QGroupBox(QStringLiteral("翻译稿选项"), this);
    auto *translateLayout = new QGridLayout(fraTranslateOption);
    chkText = box("chkText", QStringLiteral("文字"));
    chkColor = box("chkColor", QStringLiteral("颜色"));
    chkFontName = box("chkFontName", QStringLiteral("字体名"));
    chkFontSize = box("chkFontSize", QStringLiteral("字号"));
    chkThrough = box("chkThrough", QStringLiteral("删除线"));
    chkUnderline = box("chkUnderline", QStringLiteral("下划线"));
    chkBold = box("chkBold", QStringLiteral("粗体"));
    chkItaric = box("chkItaric", QStringLiteral("斜体"));
    chkBlackWhite = box("chkBlackWhite", QStringLiteral("黑白互换"));
    chkChangeTable = box("chkChangeTable", QStringLiteral("转换表"));
    i = 0;
    for (QCheckBox *c : { chkText, chkColor, chkFontName, chkFontSize, chkThrough, chkUnderline, chkBold,
             chkItaric, chkBlackWhite, chkChangeTable }) {
        translateLayout->addWidget(c, i / 2, i % 2);
        ++i;
    }
    chkDelSpace = box("chkDelSpace", QStringLiteral("删除空行"));
    chkSpaceAsReturn = box("chkSpaceAsReturn", QStringLiteral("空行作为换行"));

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
    const QList<std::pair<QCheckBox *, qint32>> timingBoxes = {
        { chkTitle, SaveOption::Head },
        { chkFont, SaveOption::Styles },
        { chkStart, SaveOption::StartTime },
        { chkEnd, SaveOption::EndTime },
        { chkDialog, SaveOption::Dialog },
        { chkDialogEffect, SaveOption::DialogTags },
        { chkOtherCol, SaveOption::OtherColumns },
    };
    for (const auto &[c, bit] : timingBoxes) {
        c->setChecked((Model.TimingOption & bit) != 0);
        c->setEnabled(on.TimingOptions);
    }
    chkDialogEffect->setEnabled(on.DialogEffect);
    cmbTimeFormat->setCurrentIndex(Model.TimeFormat());
    const QList<std::pair<QCheckBox *, qint32>> changeBoxes = {
        { chkText, ChangeOption::Text },
        { chkColor, ChangeOption::Color },
        { chkFontName, ChangeOption::FontName },
        { chkFontSize, ChangeOption::FontSize },
        { chkThrough, ChangeOption::Through },
        { chkUnderline, ChangeOption::Underline },
        { chkBold, ChangeOption::Bold },
        { chkItaric, ChangeOption::Italic },
        { chkBlackWhite, ChangeOption::BlackWhite },
    };
    for (const auto &[c, bit] : changeBoxes)
        c->setChecked((Model.ChangeOption & bit) != 0);
    chkBlackWhite->setEnabled(on.BlackWhite);
    chkChangeTable->setChecked((Model.TranslateOption & TranslateOption::ChangeTable) != 0);
    chkDelSpace->setChecked(Model.DelSpace);
    chkDelSpace->setEnabled(on.DelSpace);
    chkSpaceAsReturn->setChecked(Model.SpaceAsReturn);
    chkSpaceAsReturn->setEnabled(on.SpaceAsReturn);
    txtFileName->setText(Model.FileName);
    txtFileName->setEnabled(on.FileName);
    cmdFileName->setEnabled(on.FileName);
    ShowText(rtbSample, Model.SampleText(), CFileOptionModel::SampleIsRich(Model.ScriptType()));
    ShowText(rtfPreview, Model.FileContent, Model.PreviewIsRich);
    m_refreshing = false;
}
