#include "KXPanel.h"

#include <QBoxLayout>
#include <QDockWidget>
#include <QEvent>
#include <QMainWindow>
#include <QPainter>

namespace
{

// The panel's title, running upwards if it stands at the side, and ending in dots where the place is short.
class Heading : public QWidget
{
public:
    Heading(bool upwards, QWidget* parent) : QWidget(parent), m_upwards(upwards)
    {
        setSizePolicy(upwards ? QSizePolicy::Fixed : QSizePolicy::Ignored,
                      upwards ? QSizePolicy::Ignored : QSizePolicy::Fixed);
    }

    QSize sizeHint() const override
    {
        const QSize size(fontMetrics().horizontalAdvance(windowTitle()) + 2 * Margin,
                         fontMetrics().height() + Margin);
        return m_upwards ? size.transposed() : size;
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        QRect line = rect();
        if (m_upwards)
        {
            painter.translate(0, height());
            painter.rotate(-90);
            line = line.transposed();
        }
        line.adjust(Margin, 0, -Margin, 0);
        const QString text = fontMetrics().elidedText(windowTitle(), Qt::ElideRight, line.width());
        painter.setPen(palette().color(QPalette::WindowText));
        const Qt::Alignment side = m_upwards ? Qt::AlignTrailing : Qt::AlignLeading;
        painter.drawText(line, int(Qt::AlignVCenter | side), text);
    }

    void changeEvent(QEvent* event) override
    {
        if (event->type() == QEvent::FontChange)
        {
            updateGeometry();
        }
        QWidget::changeEvent(event);
    }

private:
    static constexpr int Margin = 6;

    bool m_upwards;
};

} // namespace

KXPanel::KXPanel(QWidget* parent, TitlePosition position, Qt::WindowFlags flags)
    : KXWidget(parent, flags), m_position(position), m_pHeading(new Heading(position == TitleLeft, this))
{
    if (position == TitleLeft)
    {
        FrameLayout()->setDirection(QBoxLayout::LeftToRight);
    }
    FrameLayout()->insertWidget(0, m_pHeading);
    connect(this, &QWidget::windowTitleChanged, this, &KXPanel::OnTitleChanged);
    ShowHeading();
}

KXPanel::~KXPanel() = default;

KXPanel::TitlePosition KXPanel::GetTitlePosition() const
{
    return m_position;
}

QDockWidget* KXPanel::GetDock() const
{
    QDockWidget* dock = qobject_cast<QDockWidget*>(parentWidget());
    return dock && dock->widget() == this ? dock : nullptr;
}

QDockWidget* KXPanel::Dock(QMainWindow* window, Qt::DockWidgetArea area)
{
    if (!window)
    {
        return nullptr;
    }
    QDockWidget* dock = GetDock();
    if (!dock)
    {
        dock = new QDockWidget(windowTitle(), window);
        const QString name =
            objectName().isEmpty() ? QString::fromLatin1(metaObject()->className()) : objectName();
        dock->setObjectName(name + QLatin1String("Dock"));
        if (m_position == TitleLeft)
        {
            dock->setFeatures(dock->features() | QDockWidget::DockWidgetVerticalTitleBar);
        }
        dock->setWidget(this);
        connect(this, &QWidget::windowTitleChanged, dock, &QWidget::setWindowTitle);
    }
    window->addDockWidget(area, dock);
    show();
    dock->show();
    return dock;
}

bool KXPanel::event(QEvent* event)
{
    const bool handled = KXWidget::event(event);
    if (event->type() == QEvent::ParentChange)
    {
        ShowHeading();
    }
    return handled;
}

void KXPanel::OnTitleChanged(const QString& title)
{
    m_pHeading->setWindowTitle(title);
    m_pHeading->updateGeometry();
    m_pHeading->update();
    setAccessibleName(title);
    ShowHeading();
}

void KXPanel::ShowHeading()
{
    const bool shownElsewhere = isWindow() || qobject_cast<QDockWidget*>(parentWidget());
    m_pHeading->setVisible(m_position != TitleNone && !windowTitle().isEmpty() && !shownElsewhere);
}
