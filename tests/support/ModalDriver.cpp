#include "ModalDriver.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QPushButton>
#include <QWindow>
#include <QtTest>

#include <algorithm>

namespace
{
QList<ModalDriver*>& drivers()
{
    static QList<ModalDriver*> list;
    return list;
}

// Windows that some driver is serving.
QList<QObject*>& servedWindows()
{
    static QList<QObject*> list;
    return list;
}

// "&Save && close" as a person reads it.
QString readable(const QString& text)
{
    QString result;
    for (int i = 0; i < text.size(); ++i)
    {
        if (text.at(i) == QLatin1Char('&') && i + 1 < text.size())
        {
            ++i;
        }
        result.append(text.at(i));
    }
    return result;
}

QString describe(const QWidget* window)
{
    return QStringLiteral("%1 \"%2\"")
        .arg(QString::fromLatin1(window->metaObject()->className()), window->windowTitle());
}

// The modal window in front, or else any dialog.
QWidget* windowToClose()
{
    if (QApplication::activeModalWidget())
    {
        return QApplication::activeModalWidget();
    }
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto dialog = std::find_if(windows.cbegin(), windows.cend(),
                                     [](const QWidget* window)
                                     { return window->isVisible() && window->windowType() == Qt::Dialog; });
    return dialog != windows.cend() ? *dialog : nullptr;
}

void fail(const QString& text)
{
    QTest::qFail(qPrintable(text), __FILE__, __LINE__);
}

bool clickButton(const QWidget* window, QAbstractButton* button, const QString& wanted)
{
    if (!button || !button->isVisible() || !button->isEnabled())
    {
        fail(QStringLiteral("%1 has no visible, enabled button \"%2\"").arg(describe(window), wanted));
        return false;
    }
    QTest::mouseClick(button, Qt::LeftButton);
    return true;
}
} // namespace

ModalDriver::ModalDriver(const Function& function, int watchdog)
    : ModalDriver(QList<Function>{function}, watchdog)
{
}

ModalDriver::ModalDriver(const QList<Function>& functions, int watchdog) : m_functions(functions)
{
    drivers().append(this);
    qApp->installEventFilter(this);
    m_watchdog.setInterval(watchdog);
    m_watchdog.setSingleShot(true);
    connect(&m_watchdog, &QTimer::timeout, this, &ModalDriver::OnWatchdog);
    m_watchdog.start();
}

ModalDriver::~ModalDriver()
{
    drivers().removeAll(this);
    for (QObject* window : qAsConst(m_open))
    {
        servedWindows().removeAll(window);
    }
    if (m_taken)
    {
        return;
    }
    if (!m_functions.isEmpty())
    {
        m_failures.append(QStringLiteral("no modal window came for %1 function(s)").arg(m_functions.size()));
    }
    if (!m_open.isEmpty())
    {
        m_failures.append(QStringLiteral("%1 modal window(s) still open").arg(m_open.size()));
    }
    if (!m_failures.isEmpty())
    {
        fail(QStringLiteral("modal driver: ") + m_failures.join(QStringLiteral("; ")));
    }
}

bool ModalDriver::Finished() const
{
    return m_functions.isEmpty() && m_open.isEmpty() && m_failures.isEmpty();
}

QStringList ModalDriver::Failures() const
{
    return m_failures;
}

QStringList ModalDriver::TakeFailures()
{
    m_taken = true;
    QStringList failures;
    failures.swap(m_failures);
    return failures;
}

int ModalDriver::Served() const
{
    return m_served;
}

bool ModalDriver::Press(QWidget* window, const QString& text)
{
    const QList<QAbstractButton*> buttons = window->findChildren<QAbstractButton*>();
    for (QAbstractButton* button : buttons)
    {
        if (readable(button->text()) == readable(text) && button->isVisible() && button->isEnabled())
        {
            return clickButton(window, button, text);
        }
    }
    return clickButton(window, nullptr, text);
}

bool ModalDriver::Press(QWidget* window, QDialogButtonBox::StandardButton button)
{
    const QList<QDialogButtonBox*> boxes = window->findChildren<QDialogButtonBox*>();
    for (const QDialogButtonBox* box : boxes)
    {
        if (box->button(button))
        {
            return clickButton(window, box->button(button), box->button(button)->text());
        }
    }
    return clickButton(window, nullptr,
                       QStringLiteral("standard button 0x%1").arg(static_cast<int>(button), 0, 16));
}

void ModalDriver::PressKey(QWidget* window, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QWidget* focused = window->focusWidget();
    QTest::keyClick(focused ? focused : window, key, modifiers);
}

void ModalDriver::CloseWindow(QWidget* window)
{
    window->windowHandle()->close();
}

bool ModalDriver::eventFilter(QObject* object, QEvent* event)
{
    switch (event->type())
    {
    case QEvent::Show:
    case QEvent::WindowActivate:
        QMetaObject::invokeMethod(this, &ModalDriver::OnLook, Qt::QueuedConnection);
        break;
    case QEvent::Hide:
        windowGone(object);
        break;
    default:
        break;
    }
    return QObject::eventFilter(object, event);
}

void ModalDriver::OnLook()
{
    QWidget* window = QApplication::activeModalWidget();
    if (window && !window->isActiveWindow() && QGuiApplication::focusWindow() == window->windowHandle())
    {
        // The offscreen platform keeps the focus on a window that is hidden, and so tells nothing when it is
        // shown again.
        QApplication::setActiveWindow(window);
    }
    const bool ready = window && window->isVisible() && window->isActiveWindow();
    if (ready && mayServe() && !servedWindows().contains(window))
    {
        serve(window);
    }
}

// The latest driver that still has something to do goes first.
bool ModalDriver::mayServe() const
{
    if (m_functions.isEmpty())
    {
        return false;
    }
    for (int i = drivers().size() - 1; drivers().at(i) != this; --i)
    {
        if (!drivers().at(i)->m_functions.isEmpty())
        {
            return false;
        }
    }
    return true;
}

void ModalDriver::serve(QWidget* window)
{
    const Function function = m_functions.takeFirst();
    m_open.append(window);
    servedWindows().append(window);
    ++m_served;
    connect(window, &QObject::destroyed, this, &ModalDriver::windowGone);
    m_watchdog.start();
    function(window);
}

void ModalDriver::windowGone(QObject* window)
{
    if (m_open.removeAll(window) == 0)
    {
        return;
    }
    servedWindows().removeAll(window);
    disconnect(window, &QObject::destroyed, this, &ModalDriver::windowGone);
    if (m_functions.isEmpty() && m_open.isEmpty())
    {
        m_watchdog.stop();
    }
    else
    {
        m_watchdog.start();
    }
}

void ModalDriver::OnWatchdog()
{
    const QWidget* window = windowToClose();
    m_failures.append(window ? QStringLiteral("%1 was not closed in time").arg(describe(window))
                             : QStringLiteral("no modal window came in time"));
    m_functions.clear();
    closeModals();
}

// A dialog may sit in its event loop without having become modal (an empty one is never mapped); it is closed
// as well. Twenty is more than any test nests.
void ModalDriver::closeModals()
{
    for (int i = 0; i < 20; ++i)
    {
        const QPointer<QWidget> window = windowToClose();
        if (!window)
        {
            return;
        }
        window->close();
        if (window && window->isVisible())
        {
            window->hide();
        }
    }
}
