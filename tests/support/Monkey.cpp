#include "Monkey.h"

#include <QApplication>
#include <QColor>
#include <QEventLoop>
#include <QFocusEvent>
#include <QMetaEnum>
#include <QThread>
#include <QVariant>
#include <QWheelEvent>
#include <QtTest>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <limits>
#include <link.h>
#include <unistd.h>

namespace
{
constexpr int DEEPEST_MODAL = 6;
constexpr int CLOSING_ATTEMPTS = 1000;
constexpr int CRASH_SIGNALS[] = {SIGSEGV, SIGABRT, SIGFPE, SIGILL, SIGBUS};

// What is told on a crash, ready made, since a signal handler may not format.
char lastWords[256] = "";

void tellLastWords()
{
    const ssize_t written = write(STDERR_FILENO, lastWords, std::strlen(lastWords));
    Q_UNUSED(written)
}

struct sigaction previousActions[std::size(CRASH_SIGNALS)];

void restorePrevious()
{
    for (std::size_t i = 0; i < std::size(CRASH_SIGNALS); ++i)
    {
        sigaction(CRASH_SIGNALS[i], &previousActions[i], nullptr);
    }
}

// Whoever was there before gets the same signal again, as the faulting instruction is run once more.
extern "C" void onCrash(int)
{
    tellLastWords();
    restorePrevious();
}

// Sanitizers end the process without a signal, but tell before. Each one that is loaded has such a function
// of its own.
int setDeathCallback(dl_phdr_info* library, std::size_t, void* callback)
{
    using Setter = void (*)(void (*)());
    if (std::strstr(library->dlpi_name, "san.so"))
    {
        if (void* handle = dlopen(library->dlpi_name, RTLD_LAZY | RTLD_NOLOAD))
        {
            if (const auto set = reinterpret_cast<Setter>(dlsym(handle, "__sanitizer_set_death_callback")))
            {
                set(reinterpret_cast<void (*)()>(callback));
            }
            dlclose(handle);
        }
    }
    return 0;
}

void listenForCrash()
{
    struct sigaction action = {};
    action.sa_handler = onCrash;
    for (std::size_t i = 0; i < std::size(CRASH_SIGNALS); ++i)
    {
        sigaction(CRASH_SIGNALS[i], &action, &previousActions[i]);
    }
    dl_iterate_phdr(setDeathCallback, reinterpret_cast<void*>(&tellLastWords));
}

const QList<int>& keys()
{
    static const QList<int> pool = {
        Qt::Key_0,      Qt::Key_1,     Qt::Key_5,      Qt::Key_9,        Qt::Key_A,      Qt::Key_M,
        Qt::Key_N,      Qt::Key_Z,     Qt::Key_Tab,    Qt::Key_Backtab,  Qt::Key_Return, Qt::Key_Enter,
        Qt::Key_Escape, Qt::Key_Space, Qt::Key_Left,   Qt::Key_Right,    Qt::Key_Up,     Qt::Key_Down,
        Qt::Key_Home,   Qt::Key_End,   Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Delete, Qt::Key_Backspace,
        Qt::Key_Plus,   Qt::Key_Minus, Qt::Key_Slash,  Qt::Key_Asterisk, Qt::Key_Comma,  Qt::Key_Period,
        Qt::Key_F2,     Qt::Key_F4,    Qt::Key_Menu};
    return pool;
}

const QList<Qt::KeyboardModifiers>& modifiers()
{
    static const QList<Qt::KeyboardModifiers> pool = {Qt::NoModifier,
                                                      Qt::NoModifier,
                                                      Qt::NoModifier,
                                                      Qt::ShiftModifier,
                                                      Qt::ControlModifier,
                                                      Qt::AltModifier,
                                                      Qt::AltModifier | Qt::ShiftModifier,
                                                      Qt::ControlModifier | Qt::ShiftModifier};
    return pool;
}

const QList<int>& integers()
{
    static const QList<int> pool = {
        std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), 0, -1, 1, 2, 50, 100, 99999};
    return pool;
}

const QList<double>& reals()
{
    static const QList<double> pool = {std::numeric_limits<double>::quiet_NaN(),
                                       std::numeric_limits<double>::infinity(),
                                       -std::numeric_limits<double>::infinity(),
                                       std::numeric_limits<double>::max(),
                                       std::numeric_limits<double>::lowest(),
                                       std::numeric_limits<double>::denorm_min(),
                                       0.0,
                                       -0.0,
                                       -1.0,
                                       0.5,
                                       100.0};
    return pool;
}

QStringList texts()
{
    return {QString(),
            QStringLiteral(""),
            QStringLiteral("text"),
            QStringLiteral("%1 & <b>bold</b>\n\t"),
            QString(20000, QLatin1Char('w')),
            QString::fromUtf8("\xE2\x80\xAE\xD7\xA9\xF0\x9F\x8E\xA8")};
}

QVariant extremeEnum(int typeId, int choice)
{
    QVariant value(typeId, nullptr);
    const QMetaObject* scope = QMetaType::metaObjectForType(typeId);
    const QByteArray name = QByteArray(QMetaType::typeName(typeId)).split(':').last();
    const int index = scope ? scope->indexOfEnumerator(name.constData()) : -1;
    if (index >= 0 && scope->enumerator(index).keyCount() > 0)
    {
        const QMetaEnum enumerator = scope->enumerator(index);
        *static_cast<int*>(value.data()) = enumerator.value(choice % enumerator.keyCount());
    }
    return value;
}

// `choice` is any non-negative number.
QVariant extremeValue(int typeId, int choice)
{
    const int integer = integers().at(choice % integers().size());
    const double real = reals().at(choice % reals().size());
    switch (static_cast<QMetaType::Type>(typeId))
    {
    case QMetaType::Bool:
        return choice % 2 == 0;
    case QMetaType::Int:
        return integer;
    case QMetaType::UInt:
        return static_cast<uint>(integer);
    case QMetaType::LongLong:
        return static_cast<qlonglong>(integer);
    case QMetaType::Double:
        return real;
    case QMetaType::Float:
        return QVariant::fromValue(choice % 2 == 0 ? std::numeric_limits<float>::quiet_NaN()
                                                   : std::numeric_limits<float>::max());
    case QMetaType::QString:
        return texts().at(choice % texts().size());
    case QMetaType::QColor:
        return QVariant::fromValue(choice % 3 == 0 ? QColor() : QColor(choice % 256, 0, 255, choice % 200));
    case QMetaType::QPoint:
        return QPoint(integer, -1);
    case QMetaType::QPointF:
        return QPointF(real, real);
    case QMetaType::QSize:
        return QSize(integer, 1);
    case QMetaType::QRect:
        return QRect(QPoint(integer, 0), QPoint(0, integer));
    default:
        break;
    }
    if (QMetaType::typeFlags(typeId) & QMetaType::IsEnumeration)
    {
        return extremeEnum(typeId, choice);
    }
    return QVariant(typeId, nullptr);
}

// The order in which the toolkit keeps windows depends on addresses; this one does not.
bool comesBefore(const QWidget* one, const QWidget* other)
{
    const int byClass = std::strcmp(one->metaObject()->className(), other->metaObject()->className());
    return byClass != 0 ? byClass < 0 : one->objectName() < other->objectName();
}

// True if a person could not reach the widget because of a modal window.
bool blocked(const QWidget* widget)
{
    const QWidget* modal = QApplication::activeModalWidget();
    for (const QWidget* window = widget; modal && window; window = window->parentWidget())
    {
        if (window == modal)
        {
            return false;
        }
    }
    return modal;
}

// Of the toolkit's own slots only those that set values. Others are for its inner use, or start event loops
// that nothing ends when they are called while one is running.
bool isForHosts(const QMetaMethod& method)
{
    static const QSet<QByteArray> owners = {"QAbstractSlider", "QAbstractSpinBox", "QComboBox",
                                            "QDoubleSpinBox",  "QLineEdit",        "QSpinBox"};
    const QByteArray owner = method.enclosingMetaObject()->className();
    const bool empties = owner == "QComboBox" && method.name() == "clear"; // would leave little to play with
    return !owner.startsWith('Q') || (owners.contains(owner) && !empties);
}

void closeTopmost()
{
    if (QPointer<QWidget> popup = QApplication::activePopupWidget())
    {
        popup->close();
        return;
    }
    if (QPointer<QWidget> modal = QApplication::activeModalWidget())
    {
        modal->close();
        if (modal && modal->isVisible())
        {
            modal->hide();
        }
    }
}
} // namespace

Monkey::Monkey(QWidget* widget, quint32 seed)
    : m_pWidget(widget),
      m_random(seed),
      m_seed(seed),
      m_verbose(qEnvironmentVariableIsSet("NORVANE_MONKEY_VERBOSE"))
{
    std::snprintf(lastWords, sizeof lastWords, "monkey: crash with seed %u on %s\n", seed,
                  widget->metaObject()->className());
    listenForCrash();
    if (m_verbose)
    {
        std::fprintf(stderr, "monkey: seed %u on %s\n", seed, widget->metaObject()->className());
    }
}

Monkey::~Monkey()
{
    restorePrevious();
    dl_iterate_phdr(setDeathCallback, nullptr);
}

void Monkey::AllowNull(const QByteArray& pointerType)
{
    m_nullAllowed.insert(pointerType);
}

void Monkey::ExcludeSlot(const QByteArray& name)
{
    m_excluded.insert(name);
}

int Monkey::Run(int events)
{
    m_left = events;
    m_done = 0;
    m_closing = 0;
    const QWidgetList windows = QApplication::topLevelWidgets();
    m_foreign = QSet<const QWidget*>(windows.cbegin(), windows.cend());
    m_level = QThread::currentThread()->loopLevel() + 1;
    QEventLoop loop;
    m_pLoop = &loop;
    QMetaObject::invokeMethod(this, &Monkey::OnStep, Qt::QueuedConnection);
    loop.exec();
    m_pLoop = nullptr;
    return m_done;
}

// The next step is queued before this one acts, so that it also comes when the action runs an event loop.
void Monkey::OnStep()
{
    if (!m_pLoop)
    {
        return;
    }
    if (m_left == 0 || !m_pWidget)
    {
        finish();
        return;
    }
    QMetaObject::invokeMethod(this, &Monkey::OnStep, Qt::QueuedConnection);
    --m_left;
    ++m_done;
    if (QThread::currentThread()->loopLevel() - m_level > DEEPEST_MODAL)
    {
        closeTopmost();
        return;
    }
    act();
}

// Everything that still runs a loop above the monkey's own must end first.
void Monkey::finish()
{
    m_left = 0;
    const bool deeper = QThread::currentThread()->loopLevel() > m_level;
    const bool open = QApplication::activePopupWidget() || QApplication::activeModalWidget();
    if ((!deeper && !open) || ++m_closing > CLOSING_ATTEMPTS)
    {
        if (deeper)
        {
            qFatal("monkey: with seed %u an event loop does not end when its windows are closed", m_seed);
        }
        m_pLoop->quit();
        return;
    }
    QMetaObject::invokeMethod(this, &Monkey::OnStep, Qt::QueuedConnection);
    closeTopmost();
    if (m_pWidget && deeper && !QApplication::activeModalWidget())
    {
        press(m_pWidget, Qt::Key_Escape, Qt::NoModifier); // ends dragging and the like
    }
}

void Monkey::act()
{
    const int choice = pick(100);
    if (!m_pWidget->isVisible() && choice < 60)
    {
        m_pWidget->show();
    }
    else if (choice < 45)
    {
        mouse();
    }
    else if (choice < 52)
    {
        wheel();
    }
    else if (choice < 75)
    {
        key();
    }
    else if (choice < 80)
    {
        focus();
    }
    else if (choice < 84)
    {
        resize();
    }
    else if (choice < 87)
    {
        visibility();
    }
    else
    {
        callSlot();
    }
}

// The widget, its children and the windows that came up meanwhile, as far as a person could reach them: an
// open popup takes all input, a modal window all but that of its own.
QWidget* Monkey::pickWidget()
{
    QList<QWidget*> roots = {m_pWidget};
    QWidgetList windows = QApplication::topLevelWidgets();
    std::stable_sort(windows.begin(), windows.end(), comesBefore);
    for (QWidget* window : qAsConst(windows))
    {
        if (!m_foreign.contains(window) && window->isVisible() && !window->inherits("QTipLabel"))
        {
            roots.append(window);
        }
    }
    const bool popup = QApplication::activePopupWidget();
    QList<QWidget*> reachable;
    for (QWidget* root : qAsConst(roots))
    {
        const QList<QWidget*> all = QList<QWidget*>{root} + root->findChildren<QWidget*>();
        std::copy_if(all.cbegin(), all.cend(), std::back_inserter(reachable),
                     [popup](const QWidget* widget)
                     {
                         const bool free =
                             popup ? widget->window()->windowType() == Qt::Popup : !blocked(widget);
                         return widget->isVisible() && free;
                     });
    }
    return reachable.isEmpty() ? nullptr : reachable.at(pick(reachable.size()));
}

QPoint Monkey::pickPoint(const QWidget* widget)
{
    constexpr int OUTSIDE = 3;
    return {pick(widget->width() + 2 * OUTSIDE) - OUTSIDE, pick(widget->height() + 2 * OUTSIDE) - OUTSIDE};
}

void Monkey::mouse()
{
    static const QList<QEvent::Type> types = {QEvent::MouseButtonPress, QEvent::MouseButtonPress,
                                              QEvent::MouseMove, QEvent::MouseMove,
                                              QEvent::MouseButtonDblClick};
    static const QList<Qt::MouseButton> buttons = {Qt::LeftButton, Qt::LeftButton,  Qt::LeftButton,
                                                   Qt::LeftButton, Qt::RightButton, Qt::MiddleButton};
    const bool release = m_pPressed && pick(3) > 0;
    QEvent::Type type = release ? QEvent::MouseButtonRelease : types.at(pick(types.size()));
    QWidget* target = m_pPressed && (release || type == QEvent::MouseMove) ? m_pPressed.data() : pickWidget();
    if (!target)
    {
        return;
    }
    const Qt::MouseButton button = release ? m_button : buttons.at(pick(buttons.size()));
    const QPoint point = pickPoint(target);
    const bool move = type == QEvent::MouseMove;
    const Qt::MouseButtons held = move && m_pPressed ? m_button : move || release ? Qt::NoButton : button;
    m_pPressed = release ? nullptr : move ? m_pPressed.data() : target;
    m_button = move ? m_button : button;
    say(release ? "release" : move ? "move" : "press", target);
    QMouseEvent event(type, point, target->mapTo(target->window(), point), target->mapToGlobal(point),
                      move ? Qt::NoButton : button, held, modifiers().at(pick(modifiers().size())));
    send(target, &event);
}

void Monkey::wheel()
{
    QWidget* target = pickWidget();
    if (!target)
    {
        return;
    }
    static const QList<int> turns = {120, -120, 8, -8, 12000, -12000, 0};
    const QPoint point = pickPoint(target);
    const QPoint angle =
        pick(4) == 0 ? QPoint(turns.at(pick(turns.size())), 0) : QPoint(0, turns.at(pick(turns.size())));
    say("wheel", target);
    QWheelEvent event(point, target->mapToGlobal(point), QPoint(), angle, Qt::NoButton,
                      modifiers().at(pick(modifiers().size())), Qt::NoScrollPhase, false);
    send(target, &event);
}

void Monkey::key()
{
    QWidget* focused =
        QApplication::activePopupWidget() ? QApplication::activePopupWidget() : QApplication::focusWidget();
    QWidget* target = focused && !blocked(focused) && pick(3) > 0 ? focused : pickWidget();
    if (!target)
    {
        return;
    }
    const Qt::Key code = static_cast<Qt::Key>(keys().at(pick(keys().size())));
    say("key", target);
    press(target, code, modifiers().at(pick(modifiers().size())));
}

// QTest::keyClick would report every key that nobody takes.
void Monkey::press(QWidget* target, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    const bool types = key < Qt::Key_Escape && !(modifiers & (Qt::ControlModifier | Qt::AltModifier));
    const QString text = types ? QString(QChar(static_cast<int>(key))).toLower() : QString();
    const QPointer<QWidget> alive = target;
    if (qt_sendShortcutOverrideEvent(target, 0, key, modifiers, text))
    {
        return;
    }
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
    {
        if (alive)
        {
            QKeyEvent event(type, key, modifiers, text);
            send(alive, &event);
        }
    }
}

void Monkey::focus()
{
    QWidget* target = pickWidget();
    if (!target)
    {
        return;
    }
    say("focus", target);
    switch (pick(3))
    {
    case 0:
        target->setFocus(static_cast<Qt::FocusReason>(pick(Qt::NoFocusReason)));
        break;
    case 1:
        target->clearFocus();
        break;
    default:
        target->window()->activateWindow();
        break;
    }
}

void Monkey::resize()
{
    static const QList<QSize> sizes = {QSize(0, 0),    QSize(1, 1),     QSize(-5, 10),
                                       QSize(40, 400), QSize(1600, 30), QSize(640, 480)};
    say("resize", m_pWidget);
    m_pWidget->resize(sizes.at(pick(sizes.size())));
}

void Monkey::visibility()
{
    say("visibility", m_pWidget);
    switch (pick(4))
    {
    case 0:
        m_pWidget->hide();
        break;
    case 1:
        m_pWidget->setEnabled(!m_pWidget->isEnabled());
        break;
    case 2:
    {
        QEvent event(QEvent::LanguageChange);
        send(m_pWidget, &event);
        break;
    }
    default:
        m_pWidget->show();
        break;
    }
}

bool Monkey::callable(const QMetaMethod& method) const
{
    if (method.methodType() != QMetaMethod::Slot || method.access() != QMetaMethod::Public ||
        m_excluded.contains(method.name()) || !isForHosts(method))
    {
        return false;
    }
    const QList<QByteArray> types = method.parameterTypes();
    for (int i = 0; i < types.size(); ++i)
    {
        const bool pointer = types.at(i).endsWith('*');
        const bool reference = types.at(i).endsWith('&');
        const bool known =
            pointer ? m_nullAllowed.contains(types.at(i)) : method.parameterType(i) != QMetaType::UnknownType;
        const bool foreign = types.at(i) == "QModelIndex"; // means nothing without its model
        if (!known || reference || foreign)
        {
            return false;
        }
    }
    return true;
}

// Slots of the widget and of such children as are not the toolkit's own classes.
void Monkey::callSlot()
{
    QList<QWidget*> targets = {m_pWidget, m_pWidget};
    const QList<QWidget*> children = m_pWidget->findChildren<QWidget*>();
    std::copy_if(children.cbegin(), children.cend(), std::back_inserter(targets),
                 [](const QWidget* child) { return *child->metaObject()->className() != 'Q'; });
    QWidget* target = targets.at(pick(targets.size()));
    const QMetaObject* meta = target->metaObject();
    QList<QMetaMethod> slotList;
    for (int i = QWidget::staticMetaObject.methodCount(); i < meta->methodCount(); ++i)
    {
        if (callable(meta->method(i)))
        {
            slotList.append(meta->method(i));
        }
    }
    if (slotList.isEmpty())
    {
        return;
    }
    const QMetaMethod method = slotList.at(pick(slotList.size()));
    QList<QVariant> values;
    void* null = nullptr;
    QGenericArgument arguments[10];
    const QList<QByteArray> types = method.parameterTypes();
    for (int i = 0; i < types.size(); ++i)
    {
        values.append(types.at(i).endsWith('*') ? QVariant()
                                                : extremeValue(method.parameterType(i), pick(1 << 16)));
    }
    for (int i = 0; i < types.size(); ++i)
    {
        const bool pointer = types.at(i).endsWith('*');
        arguments[i] = QGenericArgument(types.at(i).constData(), pointer ? &null : values[i].data());
    }
    say(method.methodSignature().constData(), target);
    method.invoke(target, Qt::DirectConnection, arguments[0], arguments[1], arguments[2], arguments[3],
                  arguments[4], arguments[5], arguments[6], arguments[7], arguments[8], arguments[9]);
}

// As if it came from the window system.
void Monkey::send(QWidget* target, QEvent* event)
{
    QSpontaneKeyEvent::setSpontaneous(event);
    QCoreApplication::sendEvent(target, event);
}

int Monkey::pick(int count)
{
    return count > 0 ? static_cast<int>(m_random() % static_cast<quint32>(count)) : 0;
}

void Monkey::say(const char* what, const QWidget* target) const
{
    if (m_verbose)
    {
        std::fprintf(stderr, "monkey: %d %s %s \"%s\"\n", m_done, what, target->metaObject()->className(),
                     qPrintable(target->objectName()));
    }
}
