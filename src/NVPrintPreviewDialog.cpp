#include "NVPrintPreviewDialog.h"

#include <QCursor>
#include <QDataStream>
#include <QGraphicsItem>
#include <QGraphicsView>
#include <QGridLayout>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPrintPreviewWidget>
#include <QPushButton>
#include <QtConcurrentRun>

#include "ConnectionCut_p.h"
#include "PrintLayout.h"
#include "ui_PrintPreview.h"

using Dialog = NVPrintPreviewDialog;

namespace
{

const qint32 SettingsVersion = 1;
// The number of a scale mode in the settings.
enum ScaleMode : qint32
{
    ModeDontScale,
    ModeFitToPage,
    ModeCustom
};

// A child of the dialog, like the widgets that it names, and gone with them.
class Form : public QObject, public Ui_PrintPreview
{
public:
    explicit Form(QObject* parent) : QObject(parent) { }
};

const auto DoubleChanged = qOverload<double>(&QDoubleSpinBox::valueChanged);
const auto IndexChanged = qOverload<int>(&QComboBox::currentIndexChanged);

template <class T>
T read(QDataStream& stream)
{
    T value{};
    stream >> value;
    return value;
}

bool isEmpty(const QRectF& rect)
{
    return rect.width() <= 0 || rect.height() <= 0;
}

void setUpPainter(QPainter& painter, const QRectF& clip, const QTransform& transform)
{
    painter.setClipRect(clip, Qt::ReplaceClip);
    painter.setTransform(transform, true);
    painter.setRenderHints(QPainter::SmoothPixmapTransform, true);
}

} // namespace

NVPrintPreviewDialog::NVPrintPreviewDialog(QWidget* parent)
    : KXDialog(parent),
      m_pUi(new Form(this)),
      m_pPrintDevice(new QPrinter(QPrinter::ScreenResolution)),
      m_pCustomPageSize(new QPageSize(QSizeF(210, 297), QPageSize::Millimeter, QStringLiteral("Custom"),
                                      QPageSize::FuzzyMatch)),
      m_pPrintWatcher(new QFutureWatcher<void>(this))
{
    m_pUi->setupUi(Content());
    m_pPrintDevice->setFullPage(true);
    m_pUi->m_pButtonBox->button(QDialogButtonBox::Ok)->setText(tr("Print"));
    connect(m_pUi->m_pButtonBox, &QDialogButtonBox::accepted, this, &Dialog::OnPrint);
    connect(m_pUi->m_pButtonBox, &QDialogButtonBox::rejected, this, &Dialog::Reject);
    InitPreview();
    m_pUi->m_pAlignment->SetState(TransformationCenterPointControl::Center);
    m_pUi->m_pPrinter->addItems(QPrinterInfo::availablePrinterNames());
    m_pUi->m_pPrinter->setCurrentText(QPrinterInfo::defaultPrinterName());
    ConnectPage();
    ConnectPlace();
    ConnectScale();
    ConnectZoom();
    connect(m_pPrintWatcher, &QFutureWatcher<void>::finished, this, &Dialog::OnPrintFinished);
    const QPrinterInfo info = QPrinterInfo::printerInfo(m_pUi->m_pPrinter->currentText());
    UpdateDPIList(info);
    UpdatePageSizeList(info);
    UpdatePageLayout();
}

NVPrintPreviewDialog::~NVPrintPreviewDialog()
{
    // A box that loses the focus while the dialog goes may tell a last value.
    const QList<QWidget*> controls = findChildren<QWidget*>();
    for (QWidget* control : controls)
        control->disconnect(this);
    // The job goes on by itself; nobody would take back the cursor.
    if (!m_pPrintWatcher->isFinished())
        QGuiApplication::restoreOverrideCursor();
    m_source = QImage();
    delete m_pCustomPageSize;
    delete m_pPrintDevice;
}

int NVPrintPreviewDialog::GetPrintersCount()
{
    return QPrinterInfo::availablePrinterNames().size();
}

int NVPrintPreviewDialog::GetCurrentAngle() const
{
    return m_pUi->m_pRotate->currentIndex();
}

QRectF NVPrintPreviewDialog::GetPageRect() const
{
    return SheetRect(Layout());
}

QRectF NVPrintPreviewDialog::GetClipRect() const
{
    return ClipRect(Layout());
}

QRectF NVPrintPreviewDialog::GetPageClipRect() const
{
    return GetClipRect() & GetPageRect();
}

QPointF NVPrintPreviewDialog::GetAlignmentOffset(const QRectF& rect) const
{
    return AlignedCorner(Layout(), rect);
}

QTransform NVPrintPreviewDialog::CalcAffineTransformation() const
{
    return ImageTransform(Layout(), m_source.size());
}

void NVPrintPreviewDialog::SetSource(const QImage& image)
{
    m_source = image;
    Q_EMIT UpdatePreview();
}

QByteArray NVPrintPreviewDialog::SaveSettings() const
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    const qint32 page = CurrentPageId();
    stream << SettingsVersion << page;
    if (page == QPageSize::Custom)
        stream << m_pUi->m_pPageWidth->value() << m_pUi->m_pPageHeight->value();
    stream << qint32(m_pUi->m_pUnits->currentIndex()) << qint32(m_pUi->m_pDPI->currentData().toInt())
           << qint32(m_pUi->m_pOrientation->currentIndex()) << m_pUi->m_pLeftMargin->value()
           << m_pUi->m_pRightMargin->value() << m_pUi->m_pTopMargin->value()
           << m_pUi->m_pBottomMargin->value();
    if (m_pUi->m_pDontScale->isChecked())
        stream << qint32(ModeDontScale);
    else if (m_pUi->m_pFitToPage->isChecked())
        stream << qint32(ModeFitToPage) << m_pUi->m_pKeepRatio->isChecked();
    else
        stream << qint32(ModeCustom) << m_pUi->m_pCustomKeepRatio->isChecked() << m_pUi->m_pCustomSX->value()
               << m_pUi->m_pCustomSY->value();
    stream << qint32(m_pUi->m_pAlignment->GetState()) << m_pUi->m_pXOffset->value()
           << m_pUi->m_pYOffset->value() << qint32(m_pUi->m_pRotate->currentIndex());
    return bytes;
}

void NVPrintPreviewDialog::RestoreSettings(const QByteArray& bytes)
{
    QDataStream stream(bytes);
    if (read<qint32>(stream) != SettingsVersion)
        return;
    RestorePage(stream);
    // Deliberate: only now, so the size of a custom page was taken in the unit before.
    m_pUi->m_pUnits->setCurrentIndex(read<qint32>(stream));
    const int resolution = m_pUi->m_pDPI->findData(read<qint32>(stream));
    if (resolution != -1)
        m_pUi->m_pDPI->setCurrentIndex(resolution);
    m_pUi->m_pOrientation->setCurrentIndex(read<qint32>(stream));
    for (QDoubleSpinBox* box : Margins())
        box->setValue(read<double>(stream));
    RestoreScale(stream);
    m_pUi->m_pAlignment->SetState(TransformationCenterPointControl::ControlState(read<qint32>(stream)));
    m_pUi->m_pXOffset->setValue(read<double>(stream));
    m_pUi->m_pYOffset->setValue(read<double>(stream));
    m_pUi->m_pRotate->setCurrentIndex(read<qint32>(stream));
}

void NVPrintPreviewDialog::OnPrinter(const QString& name)
{
    const QPrinterInfo info = QPrinterInfo::printerInfo(name);
    UpdateDPIList(info);
    UpdatePageSizeList(info);
    UpdatePageLayout();
}

void NVPrintPreviewDialog::OnPage(int row)
{
    const int id = m_pUi->m_pPageSize->itemData(row).toInt();
    m_pUi->m_pPageWidth->setReadOnly(id != QPageSize::Custom);
    m_pUi->m_pPageHeight->setReadOnly(id != QPageSize::Custom);
    const QSizeF size = PageOf(id).size(ToPageSizeUnits(m_unit));
    {
        const ConnectionCut width(m_pUi->m_pPageWidth, DoubleChanged, this, &Dialog::OnPageWidth);
        const ConnectionCut height(m_pUi->m_pPageHeight, DoubleChanged, this, &Dialog::OnPageHeight);
        SetPageMaxima(id);
        m_pUi->m_pPageWidth->setValue(size.width());
        m_pUi->m_pPageHeight->setValue(size.height());
    }
    UpdatePageLayout();
}

void NVPrintPreviewDialog::OnUnits(int row)
{
    const Unit old = m_unit;
    m_unit = Unit(row);
    // Deliberate: the page in the row that has the number of the unit. OnPage() puts the right one in.
    SetPageMaxima(m_pUi->m_pPageSize->itemData(row).toInt());
    SetUnitsSuffix(QStringLiteral(" %1").arg(m_pUi->m_pUnits->currentText()));
    RecalculateValues(old, m_unit);
    OnPage(m_pUi->m_pPageSize->currentIndex());
}

void NVPrintPreviewDialog::OnDPI(int row)
{
    // Deliberate: row 0 of an empty list, which comes here when the list is filled, is a resolution of 0.
    m_pPrintDevice->setResolution(row != -1 ? m_pUi->m_pDPI->itemData(row).toInt() : 72);
    Q_EMIT UpdatePreview();
}

void NVPrintPreviewDialog::OnOrientation(int row)
{
    m_pPrintDevice->setPageOrientation(row == 0 ? QPageLayout::Portrait : QPageLayout::Landscape);
    Q_EMIT UpdatePreview();
}

void NVPrintPreviewDialog::OnPageWidth(double width)
{
    SetCustomPage(QSizeF(width, m_pCustomPageSize->size(ToPageSizeUnits(m_unit)).height()));
}

void NVPrintPreviewDialog::OnPageHeight(double height)
{
    SetCustomPage(QSizeF(m_pCustomPageSize->size(ToPageSizeUnits(m_unit)).width(), height));
}

void NVPrintPreviewDialog::OnMargin(double)
{
    Q_EMIT UpdatePreview();
}

void NVPrintPreviewDialog::OnColor(bool checked)
{
    m_pPrintDevice->setColorMode(checked ? QPrinter::Color : QPrinter::GrayScale);
    Q_EMIT UpdatePreview();
}

void NVPrintPreviewDialog::OnPaintRequest(QPrinter* printer)
{
    const QBrush outside(Qt::darkGray, Qt::SolidPattern);
    const QRectF sheet = GetPageRect();
    const QRectF clip = GetClipRect() & sheet;
    QPainter painter(printer);
    if (isEmpty(clip))
    {
        painter.fillRect(sheet, outside);
        return;
    }
    QPainterPath whole;
    whole.addRect(sheet);
    QPainterPath inner;
    inner.addRect(clip);
    painter.fillPath(whole.subtracted(inner), outside);
    setUpPainter(painter, clip, CalcAffineTransformation());
    painter.drawImage(QPointF(0, 0), m_source);
}

void NVPrintPreviewDialog::OnPreview()
{
    const ConnectionCut box(m_pUi->m_pViewportScale, DoubleChanged, this,
                            qOverload<double>(&Dialog::OnViewportScale));
    const ConnectionCut slider(m_pUi->m_pViewportScaleSlider, &QSlider::valueChanged, this,
                               qOverload<int>(&Dialog::OnViewportScale));
    const double percent = Preview()->zoomFactor() * 100;
    QDoubleSpinBox* scale = m_pUi->m_pViewportScale;
    // A value that it shows already would draw the box once more.
    if (scale->text() != scale->textFromValue(percent) + scale->suffix())
        scale->setValue(percent);
    m_pUi->m_pViewportScaleSlider->setValue(ZoomSlider(percent));
    ChooseCache();
}

void NVPrintPreviewDialog::OnAlignment(int)
{
    Q_EMIT UpdatePreview();
}

void NVPrintPreviewDialog::OnRotate(int)
{
    Q_EMIT UpdatePreview();
}

void NVPrintPreviewDialog::OnOffset(double)
{
    Q_EMIT UpdatePreview();
}

void NVPrintPreviewDialog::OnDontScale(bool checked)
{
    if (checked)
        Q_EMIT UpdatePreview();
}

void NVPrintPreviewDialog::OnFitToPage(bool checked)
{
    if (checked)
        Q_EMIT UpdatePreview();
}

void NVPrintPreviewDialog::OnCustomScale(bool checked)
{
    if (checked)
        Q_EMIT UpdatePreview();
}

void NVPrintPreviewDialog::OnKeepRatio(bool)
{
    if (m_pUi->m_pKeepRatio->isEnabled())
        Q_EMIT UpdatePreview();
}

void NVPrintPreviewDialog::OnKeepScale(bool checked)
{
    if (checked)
        m_pUi->m_pCustomSY->setValue(m_pUi->m_pCustomSX->value());
}

void NVPrintPreviewDialog::OnScaleX(double percent)
{
    if (m_pUi->m_pCustomKeepRatio->isChecked())
    {
        const ConnectionCut cut(m_pUi->m_pCustomSY, DoubleChanged, this, &Dialog::OnScaleY);
        m_pUi->m_pCustomSY->setValue(percent);
    }
    Q_EMIT UpdatePreview();
}

void NVPrintPreviewDialog::OnScaleY(double percent)
{
    if (m_pUi->m_pCustomKeepRatio->isChecked())
    {
        const ConnectionCut cut(m_pUi->m_pCustomSX, DoubleChanged, this, &Dialog::OnScaleX);
        m_pUi->m_pCustomSX->setValue(percent);
    }
    Q_EMIT UpdatePreview();
}

void NVPrintPreviewDialog::OnZoomIn()
{
    m_pUi->m_pViewportScaleSlider->setValue(m_pUi->m_pViewportScaleSlider->value() + 1);
}

void NVPrintPreviewDialog::OnZoomOut()
{
    m_pUi->m_pViewportScaleSlider->setValue(m_pUi->m_pViewportScaleSlider->value() - 1);
}

void NVPrintPreviewDialog::OnViewportScale(double percent)
{
    {
        const ConnectionCut cut(m_pUi->m_pViewportScaleSlider, &QSlider::valueChanged, this,
                                qOverload<int>(&Dialog::OnViewportScale));
        m_pUi->m_pViewportScaleSlider->setValue(ZoomSlider(percent));
    }
    ZoomPreview(percent / 100);
}

void NVPrintPreviewDialog::OnViewportScale(int slider)
{
    {
        const ConnectionCut cut(m_pUi->m_pViewportScale, DoubleChanged, this,
                                qOverload<double>(&Dialog::OnViewportScale));
        m_pUi->m_pViewportScale->setValue(ZoomPercent(slider));
    }
    // As the box has rounded it.
    ZoomPreview(m_pUi->m_pViewportScale->value() / 100);
}

void NVPrintPreviewDialog::OnActualSize()
{
    Preview()->setZoomMode(QPrintPreviewWidget::CustomZoom);
    m_pUi->m_pViewportScale->setValue(100);
    Q_EMIT UpdatePreview();
}

void NVPrintPreviewDialog::OnFitInView()
{
    Preview()->fitInView();
    Q_EMIT UpdatePreview();
}

void NVPrintPreviewDialog::OnPrint()
{
    PrintJob job;
    job.image = m_source;
    job.printer = QPrinterInfo::printerInfo(m_pUi->m_pPrinter->currentText());
    job.pageSize = PageOf(CurrentPageId());
    job.orientation = m_pUi->m_pOrientation->currentIndex() == 0 ? QPrinter::Portrait : QPrinter::Landscape;
    job.transform = CalcAffineTransformation();
    job.clipRect = GetClipRect();
    job.resolution = m_pUi->m_pDPI->currentData().toInt();
    job.copies = m_pUi->m_pCopiesNumber->value();
    job.color = m_pUi->m_pColor->isChecked();
    m_pPrintWatcher->setFuture(QtConcurrent::run(Print, job));
    QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
    setEnabled(false);
}

void NVPrintPreviewDialog::OnPrintFinished()
{
    QGuiApplication::restoreOverrideCursor();
    Accept();
}

void NVPrintPreviewDialog::InitPreview()
{
    auto* grid = new QGridLayout(m_pUi->m_pPreviewArea);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    auto* preview = new QPrintPreviewWidget(m_pPrintDevice, m_pUi->m_pPreviewArea);
    preview->setZoomMode(QPrintPreviewWidget::FitInView);
    grid->addWidget(preview, 0, 0);
    if (auto* view = preview->findChild<QGraphicsView*>())
    {
        // What takes the keys is the view inside.
        view->setAccessibleName(tr("Preview"));
        // Its scene has a background of its own: one fill less.
        view->viewport()->setAutoFillBackground(false);
        view->viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    }
}

void NVPrintPreviewDialog::ConnectPage()
{
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    connect(m_pUi->m_pPrinter, qOverload<const QString&>(&QComboBox::currentIndexChanged), this,
            &Dialog::OnPrinter);
    QT_WARNING_POP
    connect(m_pUi->m_pPageSize, qOverload<int>(&QComboBox::currentIndexChanged), this, &Dialog::OnPage);
    connect(m_pUi->m_pUnits, qOverload<int>(&QComboBox::currentIndexChanged), this, &Dialog::OnUnits);
    connect(m_pUi->m_pDPI, qOverload<int>(&QComboBox::currentIndexChanged), this, &Dialog::OnDPI);
    connect(m_pUi->m_pOrientation, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &Dialog::OnOrientation);
    connect(m_pUi->m_pPageWidth, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
            &Dialog::OnPageWidth);
    connect(m_pUi->m_pPageHeight, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
            &Dialog::OnPageHeight);
    for (QDoubleSpinBox* box : Margins())
        connect(box, qOverload<double>(&QDoubleSpinBox::valueChanged), this, &Dialog::OnMargin);
    connect(m_pUi->m_pColor, &QCheckBox::toggled, this, &Dialog::OnColor);
}

void NVPrintPreviewDialog::ConnectPlace()
{
    connect(m_pUi->m_pAlignment, qOverload<int>(&TransformationCenterPointControl::StateChanged), this,
            &Dialog::OnAlignment);
    connect(m_pUi->m_pRotate, qOverload<int>(&QComboBox::currentIndexChanged), this, &Dialog::OnRotate);
    for (QDoubleSpinBox* box : {m_pUi->m_pXOffset, m_pUi->m_pYOffset})
        connect(box, qOverload<double>(&QDoubleSpinBox::valueChanged), this, &Dialog::OnOffset);
}

void NVPrintPreviewDialog::ConnectScale()
{
    connect(m_pUi->m_pDontScale, &QRadioButton::toggled, this, &Dialog::OnDontScale);
    connect(m_pUi->m_pFitToPage, &QRadioButton::toggled, this, &Dialog::OnFitToPage);
    connect(m_pUi->m_pCustom, &QRadioButton::toggled, this, &Dialog::OnCustomScale);
    connect(m_pUi->m_pKeepRatio, &QCheckBox::toggled, this, &Dialog::OnKeepRatio);
    connect(m_pUi->m_pCustomKeepRatio, &QCheckBox::toggled, this, &Dialog::OnKeepScale);
    connect(m_pUi->m_pCustomSX, qOverload<double>(&QDoubleSpinBox::valueChanged), this, &Dialog::OnScaleX);
    connect(m_pUi->m_pCustomSY, qOverload<double>(&QDoubleSpinBox::valueChanged), this, &Dialog::OnScaleY);
}

void NVPrintPreviewDialog::ConnectZoom()
{
    QPrintPreviewWidget* preview = Preview();
    connect(this, &Dialog::UpdatePreview, preview, &QPrintPreviewWidget::updatePreview);
    connect(preview, &QPrintPreviewWidget::paintRequested, this, &Dialog::OnPaintRequest);
    connect(preview, &QPrintPreviewWidget::previewChanged, this, &Dialog::OnPreview);
    connect(m_pUi->m_pZoomIn, &QToolButton::clicked, this, &Dialog::OnZoomIn);
    connect(m_pUi->m_pZoomOut, &QToolButton::clicked, this, &Dialog::OnZoomOut);
    connect(m_pUi->m_pViewportScale, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
            qOverload<double>(&Dialog::OnViewportScale));
    connect(m_pUi->m_pViewportScaleSlider, &QSlider::valueChanged, this,
            qOverload<int>(&Dialog::OnViewportScale));
    connect(m_pUi->m_pFitInView, &QPushButton::clicked, preview, &QPrintPreviewWidget::fitInView);
    connect(m_pUi->m_pActualSize, &QPushButton::clicked, this, &Dialog::OnActualSize);
}

QPrintPreviewWidget* NVPrintPreviewDialog::Preview() const
{
    const auto* grid = qobject_cast<QGridLayout*>(m_pUi->m_pPreviewArea->layout());
    return qobject_cast<QPrintPreviewWidget*>(grid->itemAtPosition(0, 0)->widget());
}

// The widget draws each page into a picture of its own first. That is worth its time for a turned picture,
// which is slow to draw; one that lies straight is drawn almost as fast as such a copy.
void NVPrintPreviewDialog::ChooseCache()
{
    const auto* view = Preview()->findChild<QGraphicsView*>();
    if (!view || !view->scene() || CalcAffineTransformation().type() > QTransform::TxScale)
        return;
    const QList<QGraphicsItem*> pages = view->scene()->items();
    for (QGraphicsItem* page : pages)
        page->setCacheMode(QGraphicsItem::NoCache);
}

// In the order of the settings.
std::array<QDoubleSpinBox*, 4> NVPrintPreviewDialog::Margins() const
{
    return {m_pUi->m_pLeftMargin, m_pUi->m_pRightMargin, m_pUi->m_pTopMargin, m_pUi->m_pBottomMargin};
}

PrintLayout NVPrintPreviewDialog::Layout() const
{
    const auto margins = [this](double (QDoubleSpinBox::*number)() const)
    {
        return QMarginsF((m_pUi->m_pLeftMargin->*number)(), (m_pUi->m_pTopMargin->*number)(),
                         (m_pUi->m_pRightMargin->*number)(), (m_pUi->m_pBottomMargin->*number)());
    };
    PrintLayout layout;
    layout.page = GetPageLayout(*m_pPrintDevice);
    layout.paper = m_pPrintDevice->paperRect(QPrinter::DevicePixel).size();
    layout.resolution = m_pPrintDevice->resolution();
    layout.unit = ToPageLayoutUnits(m_unit);
    layout.minimumMargins = margins(&QDoubleSpinBox::minimum);
    layout.margins = margins(&QDoubleSpinBox::value);
    layout.minimumOffset = QPointF(m_pUi->m_pXOffset->minimum(), m_pUi->m_pYOffset->minimum());
    layout.offset = QPointF(m_pUi->m_pXOffset->value(), m_pUi->m_pYOffset->value());
    layout.place = m_pUi->m_pAlignment->GetState();
    layout.rotation = PrintLayout::Rotation(m_pUi->m_pRotate->currentIndex());
    if (m_pUi->m_pFitToPage->isChecked())
        layout.scaling = PrintLayout::FitToPage;
    else if (m_pUi->m_pCustom->isChecked())
        layout.scaling = PrintLayout::CustomScale;
    layout.keepRatio = m_pUi->m_pKeepRatio->isChecked();
    layout.scaleX = m_pUi->m_pCustomSX->value() / 100;
    layout.scaleY = m_pUi->m_pCustomSY->value() / 100;
    return layout;
}

int NVPrintPreviewDialog::CurrentPageId() const
{
    return m_pUi->m_pPageSize->currentData().toInt();
}

QPageSize NVPrintPreviewDialog::PageOf(int id) const
{
    return id == QPageSize::Custom ? *m_pCustomPageSize : QPageSize(QPageSize::PageSizeId(id));
}

// From that page, or what a custom page may be at most.
void NVPrintPreviewDialog::SetPageMaxima(int id)
{
    const QPageSize limit = id == QPageSize::Custom ? QPageSize(QSizeF(1000, 1000), QPageSize::Millimeter)
                                                    : QPageSize(QPageSize::PageSizeId(id));
    const QSizeF size = limit.size(ToPageSizeUnits(m_unit));
    const ConnectionCut width(m_pUi->m_pPageWidth, DoubleChanged, this, &Dialog::OnPageWidth);
    const ConnectionCut height(m_pUi->m_pPageHeight, DoubleChanged, this, &Dialog::OnPageHeight);
    m_pUi->m_pPageWidth->setMaximum(size.width());
    m_pUi->m_pPageHeight->setMaximum(size.height());
}

void NVPrintPreviewDialog::SetCustomPage(const QSizeF& size)
{
    *m_pCustomPageSize =
        QPageSize(size, ToPageSizeUnits(m_unit), QStringLiteral("Custom"), QPageSize::FuzzyMatch);
    UpdatePageLayout();
}

void NVPrintPreviewDialog::ZoomPreview(double factor)
{
    QPrintPreviewWidget* preview = Preview();
    {
        const ConnectionCut cut(preview, &QPrintPreviewWidget::previewChanged, this, &Dialog::OnPreview);
        preview->setZoomMode(QPrintPreviewWidget::CustomZoom);
        preview->setZoomFactor(factor);
    }
    Q_EMIT UpdatePreview();
}

void NVPrintPreviewDialog::RestorePage(QDataStream& stream)
{
    const qint32 id = read<qint32>(stream);
    const int row = m_pUi->m_pPageSize->findData(id);
    if (row != -1)
        m_pUi->m_pPageSize->setCurrentIndex(row);
    if (id != QPageSize::Custom)
        return;
    const auto width = read<double>(stream);
    const auto height = read<double>(stream);
    if (row != -1)
    {
        m_pUi->m_pPageWidth->setValue(width);
        m_pUi->m_pPageHeight->setValue(height);
    }
}

void NVPrintPreviewDialog::RestoreScale(QDataStream& stream)
{
    switch (read<qint32>(stream))
    {
    case ModeDontScale:
        m_pUi->m_pDontScale->setChecked(true);
        break;
    // Deliberate: the other modes bring their values, but aren't chosen.
    case ModeFitToPage:
        m_pUi->m_pKeepRatio->setChecked(read<bool>(stream));
        break;
    default:
        m_pUi->m_pCustomKeepRatio->setChecked(read<bool>(stream));
        m_pUi->m_pCustomSX->setValue(read<double>(stream));
        m_pUi->m_pCustomSY->setValue(read<double>(stream));
    }
}

void NVPrintPreviewDialog::UpdateDPIList(const QPrinterInfo& info)
{
    const int before = m_pUi->m_pDPI->currentData().toInt();
    int row = 0;
    {
        const ConnectionCut cut(m_pUi->m_pDPI, IndexChanged, this, &Dialog::OnDPI);
        m_pUi->m_pDPI->clear();
        OnUnits(m_pUi->m_pUnits->currentIndex());
        const QList<int> resolutions = info.supportedResolutions();
        for (const int resolution : resolutions)
            m_pUi->m_pDPI->addItem(QString::number(resolution), resolution);
        row = qMax(0, m_pUi->m_pDPI->findData(before));
        m_pUi->m_pDPI->setCurrentIndex(row);
    }
    OnDPI(row);
}

void NVPrintPreviewDialog::UpdatePageSizeList(const QPrinterInfo& info)
{
    bool isNumber = false;
    int before = m_pUi->m_pPageSize->currentData().toInt(&isNumber);
    if (!isNumber)
        before = -1;
    int row = -1;
    {
        const ConnectionCut cut(m_pUi->m_pPageSize, IndexChanged, this, &Dialog::OnPage);
        m_pUi->m_pPageSize->clear();
        const QList<QPageSize> pages = info.supportedPageSizes();
        for (const QPageSize& page : pages)
            m_pUi->m_pPageSize->addItem(page.name(), int(page.id()));
        if (before != -1)
            row = m_pUi->m_pPageSize->findData(before);
        if (row == -1)
            row = qMax(0, m_pUi->m_pPageSize->findData(int(info.defaultPageSize().id())));
        m_pUi->m_pPageSize->setCurrentIndex(row);
    }
    OnPage(row);
}

void NVPrintPreviewDialog::UpdatePageLayout()
{
    m_pPrintDevice->setPageSize(PageOf(CurrentPageId()));
    Q_EMIT UpdatePreview();
}

void NVPrintPreviewDialog::SetUnitsSuffix(const QString& suffix)
{
    for (QDoubleSpinBox* box :
         {m_pUi->m_pPageWidth, m_pUi->m_pPageHeight, m_pUi->m_pLeftMargin, m_pUi->m_pRightMargin,
          m_pUi->m_pTopMargin, m_pUi->m_pBottomMargin, m_pUi->m_pXOffset, m_pUi->m_pYOffset})
    {
        box->setSuffix(suffix);
    }
}

void NVPrintPreviewDialog::RecalculateValues(Unit from, Unit to)
{
    const double least = ConvertValue(-1000, Millimeter, to);
    const double most = ConvertValue(1000, Millimeter, to);
    const auto recalculate = [&](QDoubleSpinBox* box, void (Dialog::*slot)(double))
    {
        const ConnectionCut cut(box, DoubleChanged, this, slot);
        const double value = ConvertValue(box->value(), from, to);
        box->setRange(least, most);
        box->setValue(value);
    };
    for (QDoubleSpinBox* box : Margins())
        recalculate(box, &Dialog::OnMargin);
    for (QDoubleSpinBox* box : {m_pUi->m_pXOffset, m_pUi->m_pYOffset})
        recalculate(box, &Dialog::OnOffset);
}

double NVPrintPreviewDialog::ConvertValue(double value, Unit from, Unit to)
{
    return ConvertLength(value, ToPageLayoutUnits(from), ToPageLayoutUnits(to));
}

void Print(const PrintJob& job)
{
    if (isEmpty(job.clipRect))
        return;
    QPrinter printer(job.printer, QPrinter::ScreenResolution);
    PrintPages(printer, job);
}

// Deliberate: the printer isn't put in full page mode, so everything lies off the place that the preview
// shows, by the margins that the printer cannot print on.
void PrintPages(QPrinter& printer, const PrintJob& job)
{
    printer.setPageOrientation(job.orientation == QPrinter::Landscape ? QPageLayout::Landscape
                                                                      : QPageLayout::Portrait);
    printer.setPageSize(job.pageSize);
    printer.setResolution(job.resolution);
    printer.setColorMode(job.color ? QPrinter::Color : QPrinter::GrayScale);
    QPainter painter(&printer);
    setUpPainter(painter, job.clipRect, job.transform);
    for (int i = 0; i < job.copies; ++i)
    {
        painter.drawImage(QPointF(0, 0), job.image);
        if (i != job.copies - 1)
            printer.newPage();
    }
}

QPageLayout GetPageLayout(const QPrinter& printer)
{
    QSizeF size = printer.paperRect(QPrinter::Millimeter).size();
    const bool isPortrait = printer.pageLayout().orientation() == QPageLayout::Portrait;
    // The rectangle of the paper is turned already, and the layout turns it once more.
    if (!isPortrait)
        size.transpose();
    const QPageSize page(size, QPageSize::Millimeter, QString(), QPageSize::FuzzyMatch);
    return QPageLayout(page, isPortrait ? QPageLayout::Portrait : QPageLayout::Landscape, QMarginsF(),
                       QPageLayout::Millimeter, QMarginsF());
}

QPageSize::Unit ToPageSizeUnits(NVPrintPreviewDialog::Unit unit)
{
    return QPageSize::Unit(ToPageLayoutUnits(unit));
}

QPageLayout::Unit ToPageLayoutUnits(NVPrintPreviewDialog::Unit unit)
{
    return unit >= Dialog::Millimeter && unit <= Dialog::Pica ? QPageLayout::Unit(unit)
                                                              : QPageLayout::Millimeter;
}

QPrinter::Unit ToPrinterUnits(NVPrintPreviewDialog::Unit unit)
{
    return QPrinter::Unit(ToPageLayoutUnits(unit));
}
