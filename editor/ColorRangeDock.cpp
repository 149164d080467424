#include "ColorRangeDock.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSettings>

#include <cmath>

#include "Document.h"
#include "KXDocumentInterface.h"
#include "NVSelectColorRange.h"

namespace
{

const QLatin1String ToleranceKey("colorRange/tolerance");
const QLatin1String ModeKey("colorRange/mode");
const int DefaultTolerance = 32;

QRgb Premultiplied(const QColor& color)
{
    return qPremultiply(color.rgba());
}

// By the channel that differs most.
int Difference(QRgb one, QRgb other)
{
    return qMax(qMax(qAbs(qRed(one) - qRed(other)), qAbs(qGreen(one) - qGreen(other))),
                qMax(qAbs(qBlue(one) - qBlue(other)), qAbs(qAlpha(one) - qAlpha(other))));
}

// Those that accept and reject the panel, on the canvas too.
bool IsDialogKey(const QKeyEvent* event)
{
    return event->key() == Qt::Key_Escape || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
}

} // namespace

ColorRangeDock::ColorRangeDock(QSettings* settings, QWidget* parent)
    : QDockWidget(tr("Select Colour Range"), parent),
      m_pSettings(settings),
      m_pPanel(new NVSelectColorRange(nullptr))
{
    setObjectName(QStringLiteral("ColorRangeDock"));
    setWidget(m_pPanel);
    m_pPanel->SetTolerance(settings->value(ToleranceKey, DefaultTolerance).toInt());
    m_pPanel->SetMode(qBound(0, settings->value(ModeKey, 0).toInt(), 3));
    connect(m_pPanel, &KXDialogPanel::Accepted, this, &ColorRangeDock::OnAccepted);
    connect(m_pPanel, &KXDialogPanel::Rejected, this, &ColorRangeDock::OnRejected);
    connect(m_pPanel, &NVSelectColorRange::ToleranceChanged, this, &ColorRangeDock::OnChanged);
    connect(m_pPanel, &NVSelectColorRange::ColorListChanged, this, &ColorRangeDock::OnChanged);
    // The panel does not tell of its mode, but its list does.
    connect(m_pPanel->findChild<QComboBox*>(QStringLiteral("m_pMode")),
            qOverload<int>(&QComboBox::currentIndexChanged), this, &ColorRangeDock::OnChanged);
    m_pPanel->findChild<QLabel*>(QStringLiteral("m_pPreview"))->installEventFilter(this);
    connect(&m_work, &BackgroundWork::Done, this, &ColorRangeDock::OnComputed);
    hide();
}

ColorRangeDock::~ColorRangeDock()
{
    // The panel tells of its end otherwise.
    disconnect(m_pPanel, nullptr, this, nullptr);
    Disconnect();
}

bool ColorRangeDock::IsOpen() const
{
    return m_isOpen;
}

bool ColorRangeDock::IsComputing() const
{
    return m_work.IsRunning();
}

ColorRangeSettings ColorRangeDock::GetSettings() const
{
    ColorRangeSettings settings;
    settings.tolerance = m_pPanel->GetTolerance();
    const QList<QColor> colors = m_pPanel->GetSourceColors();
    for (const QColor& color : colors)
        settings.colors += Premultiplied(color);
    return settings;
}

int ColorRangeDock::GetState() const
{
    return ReplaceSelection + m_pPanel->GetMode();
}

void ColorRangeDock::SetCanvas(NVDocumentView* view, Document* document)
{
    // Without a canvas it may be one that died, which still is to be left.
    if (view && document && view == m_pView && document == m_pDocument)
        return;
    Disconnect();
    m_pView = view;
    m_pDocument = document;
    if (!m_isOpen)
        return;
    if (!view || !document)
    {
        Cancel();
        return;
    }
    Connect();
    OnChanged();
}

void ColorRangeDock::Open()
{
    if (!m_pView || !m_pDocument)
        return;
    const bool wasOpen = m_isOpen;
    m_isOpen = true;
    show();
    raise();
    if (wasOpen)
        return;
    Q_EMIT Opened();
    Connect();
    OnChanged();
}

void ColorRangeDock::Cancel()
{
    if (m_isOpen)
        m_pPanel->Reject();
}

bool ColorRangeDock::eventFilter(QObject* object, QEvent* event)
{
    // The kind comes first: while it is destroyed, the view is no view any more.
    if (event->type() == QEvent::KeyPress && object == m_pView && IsDialogKey(static_cast<QKeyEvent*>(event)))
    {
        QCoreApplication::sendEvent(m_pPanel, event);
        return true;
    }
    if (event->type() == QEvent::Resize && object != m_pView)
        OnChanged();
    return QDockWidget::eventFilter(object, event);
}

void ColorRangeDock::OnPressed(const CanvasPoint& point)
{
    const QPoint pixel(int(std::floor(point.position.x())), int(std::floor(point.position.y())));
    const QImage& picture = m_pDocument->GetPixels()->GetComposition();
    if (point.button != Qt::LeftButton || !picture.valid(pixel))
        return;
    const QColor color = picture.pixelColor(pixel);
    if (point.modifiers & Qt::AltModifier)
        RemoveColor(color);
    else
        AddColor(color);
}

void ColorRangeDock::OnChanged()
{
    if (!m_isOpen || !m_pDocument)
        return;
    const KXDocumentInterface* pixels = m_pDocument->GetPixels();
    m_pPreview = std::make_shared<QImage>();
    m_work.Start(
        [preview = m_pPreview, picture = pixels->GetComposition(), selection = pixels->GetSelectionMask(),
         settings = GetSettings(), state = GetState(),
         room = m_pPanel->GetPreviewSize() * devicePixelRatioF()](const std::atomic<bool>& cancelled)
        {
            *preview = ColorRangePreview(picture, selection, settings, state, room,
                                         [&cancelled] { return cancelled.load(); });
        });
}

void ColorRangeDock::OnComputed()
{
    m_pPreview->setDevicePixelRatio(devicePixelRatioF());
    m_pPanel->SetPreview(QPixmap::fromImage(*m_pPreview));
    Q_EMIT PreviewShown();
}

void ColorRangeDock::OnAccepted()
{
    if (!m_isOpen)
        return;
    m_pSettings->setValue(ToleranceKey, m_pPanel->GetTolerance());
    m_pSettings->setValue(ModeKey, m_pPanel->GetMode());
    Close();
    Q_EMIT Accepted();
}

void ColorRangeDock::OnRejected()
{
    if (m_isOpen)
        Close();
}

void ColorRangeDock::Connect()
{
    connect(m_pView, &NVDocumentView::Pressed, this, &ColorRangeDock::OnPressed);
    const KXDocumentInterface* pixels = m_pDocument->GetPixels();
    connect(pixels, &KXDocumentInterface::CompositionChanged, this, &ColorRangeDock::OnChanged);
    connect(pixels, &KXDocumentInterface::SelectionChanged, this, &ColorRangeDock::OnChanged);
    m_pView->installEventFilter(this);
    m_pView->SetToolCursor(Qt::CrossCursor);
}

void ColorRangeDock::Disconnect()
{
    if (m_pView)
    {
        disconnect(m_pView, nullptr, this, nullptr);
        m_pView->removeEventFilter(this);
        m_pView->SetToolCursor(Qt::ArrowCursor);
    }
    if (m_pDocument)
        disconnect(m_pDocument->GetPixels(), nullptr, this, nullptr);
    m_work.Cancel();
}

void ColorRangeDock::Close()
{
    m_isOpen = false;
    Disconnect();
    m_pPanel->SetPreview(QPixmap());
    Q_EMIT Closed();
}

void ColorRangeDock::AddColor(const QColor& color)
{
    const QList<QColor> colors = m_pPanel->GetSourceColors();
    if (colors.contains(color))
    {
        m_pPanel->SelectColor(colors.indexOf(color));
        return;
    }
    m_pPanel->AddColor(color, color);
    if (m_pPanel->GetSourceColors().size() == colors.size())
        Q_EMIT Message(tr("The strip is full: remove colours to add others."));
}

void ColorRangeDock::RemoveColor(const QColor& color)
{
    const QVector<QRgb> colors = GetSettings().colors;
    int nearest = -1;
    int least = m_pPanel->GetTolerance() + 1;
    for (int i = 0; i < colors.size(); ++i)
    {
        const int difference = Difference(colors.at(i), Premultiplied(color));
        if (difference < least)
        {
            nearest = i;
            least = difference;
        }
    }
    if (nearest == -1)
    {
        Q_EMIT Message(tr("No colour of the strip is like that one."));
        return;
    }
    m_pPanel->SelectColor(nearest);
    // The panel removes by its button alone.
    m_pPanel->findChild<QPushButton*>(QStringLiteral("m_pRemove"))->click();
}
