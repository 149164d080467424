#include "BatchJobPanel.h"

#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>

#include "DocumentFile.h"
#include "KXCommonComboBox.h"
#include "KXDocumentInterface.h"
#include "NVSpinBox.h"

namespace
{

const QLatin1String ResizeKey("batch/resize");
const QLatin1String WidthKey("batch/width");
const QLatin1String HeightKey("batch/height");
const QLatin1String EnlargeKey("batch/enlarge");
const QLatin1String PercentKey("batch/percent");
const QLatin1String RotateKey("batch/rotation");
const QLatin1String FormatKey("batch/format");
const QLatin1String FolderKey("batch/folder");
const QLatin1String KeepFoldersKey("batch/keepFolders");

// Those that are used most come first, the others follow by name.
QStringList Formats()
{
    QStringList formats = WritableSuffixes();
    for (const char* first : {"tif", "webp", "jpg", "png"})
    {
        const QString suffix = QString::fromLatin1(first);
        if (formats.removeAll(suffix) > 0)
            formats.prepend(suffix);
    }
    // The same format under two names.
    formats.removeAll(QStringLiteral("jpeg"));
    if (formats.contains(QLatin1String("tif")))
        formats.removeAll(QStringLiteral("tiff"));
    return formats;
}

void Choose(QComboBox* combo, const QVariant& value)
{
    combo->setCurrentIndex(qMax(0, combo->findData(value)));
}

} // namespace

BatchJobPanel::BatchJobPanel(QSettings* settings, QWidget* parent)
    : QWidget(parent),
      m_pSettings(settings),
      m_pResize(new KXCommonComboBox(this)),
      m_pBounds(new QWidget(this)),
      m_pWidth(AddBox(QStringLiteral("m_pWidth"), KXDocumentInterface::MAX_DOC_DIMENSION, tr(" px"))),
      m_pHeight(AddBox(QStringLiteral("m_pHeight"), KXDocumentInterface::MAX_DOC_DIMENSION, tr(" px"))),
      m_pEnlarge(new QCheckBox(tr("&Enlarge smaller images"), this)),
      m_pPercent(AddBox(QStringLiteral("m_pPercent"), 1000, tr(" %"))),
      m_pRotate(new KXCommonComboBox(this)),
      m_pFormat(new KXCommonComboBox(this)),
      m_pFolder(new QLineEdit(this)),
      m_pKeepFolders(new QCheckBox(tr("&Keep the structure of folders"), this))
{
    auto* form = new QFormLayout(this);
    CreateResize(form);
    CreateOutput(form);
    connect(m_pResize, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &BatchJobPanel::OnResizeChanged);
    connect(m_pFolder, &QLineEdit::textChanged, this, &BatchJobPanel::FolderChanged);
    RestoreValues();
    OnResizeChanged(m_pResize->currentIndex());
}

BatchChange BatchJobPanel::GetChange() const
{
    BatchChange change;
    change.resize = BatchChange::Resize(m_pResize->currentData().toInt());
    change.bounds = QSize(m_pWidth->value(), m_pHeight->value());
    change.enlarges = m_pEnlarge->isChecked();
    change.percent = m_pPercent->value();
    change.rotation = m_pRotate->currentData().toInt();
    return change;
}

OutputRule BatchJobPanel::GetRule() const
{
    QString folder = QDir::fromNativeSeparators(m_pFolder->text());
    if (folder == QLatin1String("~") || folder.startsWith(QLatin1String("~/")))
        folder.replace(0, 1, QDir::homePath());
    OutputRule rule;
    if (!folder.trimmed().isEmpty())
        rule.folder = QDir::cleanPath(QDir::home().absoluteFilePath(folder));
    rule.keepsFolders = m_pKeepFolders->isChecked();
    rule.suffix = m_pFormat->currentData().toString();
    return rule;
}

void BatchJobPanel::SetFolder(const QString& folder)
{
    m_pFolder->setText(QDir::toNativeSeparators(folder));
}

void BatchJobPanel::StoreValues() const
{
    m_pSettings->setValue(ResizeKey, m_pResize->currentData());
    m_pSettings->setValue(WidthKey, m_pWidth->value());
    m_pSettings->setValue(HeightKey, m_pHeight->value());
    m_pSettings->setValue(EnlargeKey, m_pEnlarge->isChecked());
    m_pSettings->setValue(PercentKey, m_pPercent->value());
    m_pSettings->setValue(RotateKey, m_pRotate->currentData());
    m_pSettings->setValue(FormatKey, m_pFormat->currentData());
    m_pSettings->setValue(FolderKey, m_pFolder->text());
    m_pSettings->setValue(KeepFoldersKey, m_pKeepFolders->isChecked());
}

void BatchJobPanel::OnResizeChanged(int)
{
    const int resize = m_pResize->currentData().toInt();
    m_pBounds->setEnabled(resize == BatchChange::FitWithin);
    m_pEnlarge->setEnabled(resize == BatchChange::FitWithin);
    m_pPercent->setEnabled(resize == BatchChange::ByPercent);
}

void BatchJobPanel::OnChooseFolder()
{
    const QString folder = QFileDialog::getExistingDirectory(this, tr("Output Folder"), GetRule().folder);
    if (!folder.isEmpty())
        SetFolder(folder);
}

void BatchJobPanel::CreateResize(QFormLayout* form)
{
    m_pResize->setObjectName(QStringLiteral("m_pResize"));
    m_pResize->addItem(tr("Keep the size"), BatchChange::KeepSize);
    m_pResize->addItem(tr("Fit within"), BatchChange::FitWithin);
    m_pResize->addItem(tr("By percent"), BatchChange::ByPercent);
    m_pWidth->setAccessibleName(tr("Greatest width"));
    m_pHeight->setAccessibleName(tr("Greatest height"));
    auto* by = new QLabel(tr("by"), m_pBounds);
    auto* bounds = new QHBoxLayout(m_pBounds);
    bounds->setContentsMargins(0, 0, 0, 0);
    bounds->addWidget(m_pWidth);
    bounds->addWidget(by);
    bounds->addWidget(m_pHeight);
    bounds->addStretch();
    m_pEnlarge->setObjectName(QStringLiteral("m_pEnlarge"));
    m_pRotate->setObjectName(QStringLiteral("m_pRotate"));
    m_pRotate->addItem(tr("Not at all"), 0);
    m_pRotate->addItem(tr("90° clockwise"), 90);
    m_pRotate->addItem(tr("180°"), 180);
    m_pRotate->addItem(tr("90° counter-clockwise"), 270);
    form->addRow(tr("Resi&ze:"), m_pResize);
    form->addRow(QString(), m_pBounds);
    form->addRow(QString(), m_pEnlarge);
    form->addRow(tr("&Percent:"), m_pPercent);
    form->addRow(tr("R&otate:"), m_pRotate);
}

void BatchJobPanel::CreateOutput(QFormLayout* form)
{
    m_pFormat->setObjectName(QStringLiteral("m_pFormat"));
    m_pFormat->addItem(tr("As the source"), QString());
    const QStringList formats = Formats();
    for (const QString& format : formats)
        m_pFormat->addItem(format.toUpper(), format);
    m_pFormat->setToolTip(tr("Images in a format that cannot be written become PNG."));
    m_pFolder->setObjectName(QStringLiteral("m_pFolder"));
    m_pFolder->setPlaceholderText(tr("Choose a folder"));
    // What is dropped on the window is input.
    m_pFolder->setAcceptDrops(false);
    auto* choose = new QPushButton(tr("&Choose..."), this);
    choose->setAutoDefault(false);
    choose->setToolTip(tr("Choose the output folder"));
    auto* folder = new QHBoxLayout;
    folder->addWidget(m_pFolder);
    folder->addWidget(choose);
    m_pKeepFolders->setObjectName(QStringLiteral("m_pKeepFolders"));
    auto* promise = new QLabel(
        tr("Sources and other files are never overwritten: where a name is taken, a number is added to it."),
        this);
    promise->setWordWrap(true);
    form->addRow(tr("For&mat:"), m_pFormat);
    form->addRow(tr("O&utput folder:"), folder);
    qobject_cast<QLabel*>(form->labelForField(folder))->setBuddy(m_pFolder);
    form->addRow(QString(), m_pKeepFolders);
    form->addRow(promise);
    connect(choose, &QPushButton::clicked, this, &BatchJobPanel::OnChooseFolder);
}

NVSpinBox* BatchJobPanel::AddBox(const QString& name, int maximum, const QString& suffix)
{
    auto* box = new NVSpinBox(this);
    box->setObjectName(name);
    box->setRange(1, maximum);
    box->setSuffix(suffix);
    return box;
}

void BatchJobPanel::RestoreValues()
{
    const BatchChange defaults;
    Choose(m_pResize, m_pSettings->value(ResizeKey, defaults.resize).toInt());
    m_pWidth->setValue(m_pSettings->value(WidthKey, defaults.bounds.width()).toInt());
    m_pHeight->setValue(m_pSettings->value(HeightKey, defaults.bounds.height()).toInt());
    m_pEnlarge->setChecked(m_pSettings->value(EnlargeKey, defaults.enlarges).toBool());
    m_pPercent->setValue(m_pSettings->value(PercentKey, defaults.percent).toInt());
    Choose(m_pRotate, m_pSettings->value(RotateKey, defaults.rotation).toInt());
    Choose(m_pFormat, m_pSettings->value(FormatKey).toString());
    m_pFolder->setText(m_pSettings->value(FolderKey).toString());
    m_pKeepFolders->setChecked(m_pSettings->value(KeepFoldersKey, true).toBool());
}
