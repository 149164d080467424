#include "NVSelectColorRange.h"

#include <QGridLayout>
#include <QMouseEvent>
#include <QPair>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>

#include <algorithm>

#include "KXColorDlg.h"
#include "OutliveParent_p.h"
#include "ui_SelectColorRange.h"

struct NVSelectColorRange::Data : Ui_SelectColorRange
{
    ~Data() { qDeleteAll(m_swatches); }

    QGridLayout* Strip() const { return static_cast<QGridLayout*>(m_pColorArea->widget()->layout()); }

    // What is shown, and what the selection is computed from.
    QList<QPair<QColor, QColor>> m_colors;
    // One a colour, in the same order; children of the strip.
    QList<QLabel*> m_swatches;
    int m_currentIndex = -1;
};

namespace
{

const int MaxColors = 256;
const int SwatchSide = 16;
// How far the strip scrolls beyond the selected swatch.
const int ScrollRoom = 32;
// Around the strip, so that the swatches have room above the scroll bar.
const int StripMargin = 4;

bool fits(const QLabel* label, const QFont& font)
{
    return QFontMetrics(font).horizontalAdvance(label->text()) <= label->maximumWidth();
}

// The labels keep their width whatever font there is: one that is too wide becomes narrower, on all alike.
void fitFont(const QList<QLabel*>& labels)
{
    QFont font = labels.first()->font();
    const auto fitsFont = [&font](const QLabel* label) { return fits(label, font); };
    for (int stretch = QFont::Unstretched; stretch > QFont::UltraCondensed; --stretch)
    {
        if (std::all_of(labels.begin(), labels.end(), fitsFont))
            break;
        font.setStretch(stretch - 1);
    }
    for (QLabel* label : labels)
        label->setFont(font);
}

} // namespace

NVSelectColorRange::NVSelectColorRange(QWidget* parent) : KXDialogPanel(parent), m_pData(new Data)
{
    m_pData->setupUi(Content());
    fitFont({m_pData->label_3, m_pData->label_4, m_pData->label_5});
    ConnectSignals();
    InitStrip();
}

NVSelectColorRange::~NVSelectColorRange()
{
    delete m_pData;
}

int NVSelectColorRange::GetTolerance() const
{
    return m_pData->m_pTolerance->value();
}

int NVSelectColorRange::GetMode() const
{
    return m_pData->m_pMode->currentIndex();
}

int NVSelectColorRange::GetCurrentIndex() const
{
    return m_pData->m_currentIndex;
}

QSize NVSelectColorRange::GetPreviewSize() const
{
    return m_pData->m_pPreview->size();
}

QList<QColor> NVSelectColorRange::GetSourceColors() const
{
    QList<QColor> sources;
    sources.reserve(m_pData->m_colors.size());
    for (const QPair<QColor, QColor>& color : qAsConst(m_pData->m_colors))
        sources.append(color.second);
    return sources;
}

void NVSelectColorRange::SetTolerance(int tolerance)
{
    m_pData->m_pTolerance->setValue(tolerance);
}

void NVSelectColorRange::SetMode(int mode)
{
    m_pData->m_pMode->setCurrentIndex(mode);
}

void NVSelectColorRange::AddColor(const QColor& shown, const QColor& source)
{
    if (m_pData->m_colors.size() >= MaxColors)
        return;
    const QColor display = shown.alpha() == 0 ? QColor(Qt::white) : shown;
    // The list stores `shown`, so a fully transparent one is never found again, on purpose.
    if (m_pData->m_colors.contains(qMakePair(display, source)))
        return;
    m_pData->m_swatches.append(AddSwatch(display));
    m_pData->m_colors.append(qMakePair(shown, source));

    const QPointer<NVSelectColorRange> self(this);
    SelectColor(m_pData->m_colors.size() - 1);
    if (!self)
        return;
    m_pData->m_pRemoveAll->setEnabled(true);
    Q_EMIT ColorListChanged();
}

void NVSelectColorRange::SetPreview(const QPixmap& preview)
{
    m_pData->m_pPreview->setPixmap(preview);
}

void NVSelectColorRange::SelectColor(int index)
{
    if (index < -1 || index >= m_pData->m_swatches.size())
        return;
    if (index == m_pData->m_currentIndex)
    {
        m_pData->m_pRemove->setEnabled(index != -1);
        return;
    }
    if (m_pData->m_currentIndex != -1)
        m_pData->m_swatches[m_pData->m_currentIndex]->setFrameStyle(QFrame::NoFrame);
    m_pData->m_currentIndex = index;
    if (index != -1)
    {
        // The mark has the strip laid out anew, which scrolling does anyway.
        m_pData->m_swatches[index]->setFrameStyle(QFrame::Box);
        ScrollToSwatch(index);
    }
    ShowFigures();

    const QPointer<NVSelectColorRange> self(this);
    Q_EMIT ColorSelected(index);
    if (self)
        m_pData->m_pRemove->setEnabled(m_pData->m_currentIndex != -1);
}

bool NVSelectColorRange::eventFilter(QObject* object, QEvent* event)
{
    auto* label = qobject_cast<QLabel*>(object);
    if (label && event->type() == QEvent::MouseButtonPress &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
    {
        const QPointer<NVSelectColorRange> self(this);
        SelectColor(m_pData->m_swatches.indexOf(label));
        // The label went with the panel, and takes no event any more.
        if (!self)
            return true;
    }
    return KXWidget::eventFilter(object, event);
}

// Tells of the list alone: neither the figures nor the button follow the selection here, on purpose.
void NVSelectColorRange::OnRemove()
{
    const int index = m_pData->m_currentIndex;
    if (index == -1)
    {
        EnableRemoveAll();
        return;
    }
    DropSwatch(m_pData->m_swatches.takeAt(index));
    m_pData->m_colors.removeAt(index);
    QGridLayout* strip = m_pData->Strip();
    for (int i = index; i < m_pData->m_swatches.size(); ++i)
        strip->addItem(strip->takeAt(strip->indexOf(m_pData->m_swatches[i])), 0, i);
    // Without a colour left this is -1.
    m_pData->m_currentIndex = qMin(index, m_pData->m_swatches.size() - 1);
    if (m_pData->m_currentIndex != -1)
        m_pData->m_swatches[m_pData->m_currentIndex]->setFrameStyle(QFrame::Box);

    const QPointer<NVSelectColorRange> self(this);
    Q_EMIT ColorListChanged();
    if (self)
        EnableRemoveAll();
}

void NVSelectColorRange::OnRemoveAll()
{
    for (QLabel* swatch : qAsConst(m_pData->m_swatches))
        DropSwatch(swatch);
    m_pData->m_swatches.clear();
    m_pData->m_colors.clear();
    m_pData->m_currentIndex = -1;
    m_pData->m_pRemoveAll->setEnabled(false);
    m_pData->m_pRemove->setEnabled(false);
    Q_EMIT ColorListChanged();
}

void NVSelectColorRange::OnChooseColor()
{
    const QPointer<NVSelectColorRange> self(this);
    KXColorDlg dialog(this, Qt::WindowFlags());
    OutliveParent(&dialog);
    dialog.setWindowTitle(tr("Choose a color"));
    if (dialog.Exec() == KXDialog::ResultAccepted && self)
        AddColor(dialog.SelectedColor(), dialog.SelectedColor());
}

void NVSelectColorRange::ConnectSignals()
{
    connect(m_pData->m_pButtonBox, &QDialogButtonBox::accepted, this, &KXDialogPanel::Accept);
    connect(m_pData->m_pButtonBox, &QDialogButtonBox::rejected, this, &KXDialogPanel::Reject);
    connect(m_pData->m_pRemove, &QPushButton::clicked, this, &NVSelectColorRange::OnRemove);
    connect(m_pData->m_pRemoveAll, &QPushButton::clicked, this, &NVSelectColorRange::OnRemoveAll);
    connect(m_pData->m_pChooseColor, &QPushButton::clicked, this, &NVSelectColorRange::OnChooseColor);
    connect(m_pData->m_pTolerance, qOverload<int>(&QSpinBox::valueChanged), this,
            &NVSelectColorRange::ToleranceChanged);
}

void NVSelectColorRange::InitStrip()
{
    auto* strip = new QFrame(m_pData->m_pColorArea);
    auto* grid = new QGridLayout(strip);
    grid->setContentsMargins(StripMargin, StripMargin, StripMargin, StripMargin);
    // The strip grows before its swatches are placed, so that none is squeezed first.
    grid->setSizeConstraint(QLayout::SetMinimumSize);
    // Behind the last swatch that can come; it takes all spare width.
    grid->setColumnStretch(MaxColors, 10);
    m_pData->m_pColorArea->setWidget(strip);
}

QLabel* NVSelectColorRange::AddSwatch(const QColor& color)
{
    auto* swatch = new QLabel(m_pData->m_pColorArea->widget());
    QPixmap picture(SwatchSide, SwatchSide);
    picture.fill(color);
    swatch->setPixmap(picture);
    swatch->setMaximumSize(SwatchSide, SwatchSide);
    swatch->setAccessibleName(color.name());
    QGridLayout* strip = m_pData->Strip();
    strip->addWidget(swatch, 0, m_pData->m_swatches.size());
    // A swatch that appears has all of them laid out, as its selection will do anyway.
    strip->setEnabled(false);
    swatch->show();
    strip->setEnabled(true);
    swatch->installEventFilter(this);
    return swatch;
}

void NVSelectColorRange::DropSwatch(QLabel* swatch)
{
    m_pData->Strip()->removeWidget(swatch);
    swatch->deleteLater();
}

void NVSelectColorRange::ScrollToSwatch(int index)
{
    // The toolkit does it at the next turn of the event loop only.
    m_pData->Strip()->activate();
    QScrollBar* bar = m_pData->m_pColorArea->horizontalScrollBar();
    const int width = m_pData->m_pColorArea->viewport()->width();
    const int end = m_pData->Strip()->cellRect(0, index).right() + ScrollRoom;
    if (end > bar->value() + width || end < bar->value())
        bar->setValue(end - width);
}

void NVSelectColorRange::ShowFigures()
{
    const int index = m_pData->m_currentIndex;
    const QColor color = index == -1 ? QColor() : m_pData->m_colors[index].first;
    const auto text = [index](int part) { return index == -1 ? QString() : QString::number(part); };
    m_pData->m_pRed->setText(text(color.red()));
    m_pData->m_pGreen->setText(text(color.green()));
    m_pData->m_pBlue->setText(text(color.blue()));
}

void NVSelectColorRange::EnableRemoveAll()
{
    m_pData->m_pRemoveAll->setEnabled(!m_pData->m_colors.isEmpty());
}
