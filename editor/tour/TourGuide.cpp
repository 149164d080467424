#include "TourGuide.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QToolButton>
#include <QUndoStack>
#include <QUrl>

#include <cmath>
#include <memory>

#include "Document.h"
#include "DocumentWindow.h"
#include "KXAddToBatchManager.h"
#include "KXDocumentInterface.h"
#include "KXMdiArea.h"
#include "KXPopupWindow.h"
#include "NVDocumentView.h"
#include "ToolBox.h"

QPoint PixelOf(const QPointF& point)
{
    return QPoint(int(std::floor(point.x())), int(std::floor(point.y())));
}

bool AreNear(QRgb one, QRgb other, int tolerance)
{
    return std::abs(qRed(one) - qRed(other)) <= tolerance &&
        std::abs(qGreen(one) - qGreen(other)) <= tolerance &&
        std::abs(qBlue(one) - qBlue(other)) <= tolerance &&
        std::abs(qAlpha(one) - qAlpha(other)) <= tolerance;
}

QString ColorText(QRgb color)
{
    return QColor::fromRgba(color).name(qAlpha(color) < 255 ? QColor::HexArgb : QColor::HexRgb);
}

QRgb Multiplied(QRgb one, QRgb other)
{
    return qRgb(qRed(one) * qRed(other) / 255, qGreen(one) * qGreen(other) / 255,
                qBlue(one) * qBlue(other) / 255);
}

namespace
{

QRect PlaceOf(const QWidget* widget)
{
    return QRect(widget->mapToGlobal(QPoint()), widget->size());
}

// Next to the button and clear of it, if the screen has room for that.
bool IsBeside(const QWidget* popup, const QWidget* button)
{
    const QRect place = PlaceOf(popup);
    const QRect screen = button->screen()->availableGeometry();
    const int room = qMax(PlaceOf(button).top() - screen.top(), screen.bottom() - PlaceOf(button).bottom());
    if (!screen.contains(PlaceOf(button)) || place.height() >= room)
        return true;
    return !place.intersects(PlaceOf(button)) && place.adjusted(-4, -4, 4, 4).intersects(PlaceOf(button));
}

} // namespace

TourGuide::TourGuide(const QString& folder, const QString& picture) : m_report(folder), m_picture(picture)
{
    if (!IsReady())
        return;
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    m_pSettings = std::make_unique<QSettings>(FileFor(QStringLiteral("tour.ini")), QSettings::IniFormat);
    m_pSettings->setValue(QStringLiteral("files/folder"), m_files.path());
    m_pWindow = std::make_unique<MainWindow>(m_pSettings.get());
    m_robot.SetHome(m_pWindow.get());
    m_robot.SetReport([this](const QString& reason) { Fail(reason); });
}

TourGuide::~TourGuide() = default;

bool TourGuide::IsReady() const
{
    return m_report.IsReady() && m_files.isValid();
}

QString TourGuide::GetPicture() const
{
    return m_picture;
}

MainWindow* TourGuide::GetWindow() const
{
    return m_pWindow.get();
}

TourRobot& TourGuide::GetRobot()
{
    return m_robot;
}

Document* TourGuide::GetDocument() const
{
    return m_pWindow->GetDocument();
}

Document* TourGuide::NeedDocument() const
{
    return Needed(GetDocument(), "no document is open");
}

KXDocumentInterface* TourGuide::GetPixels() const
{
    return NeedDocument()->GetPixels();
}

NVDocumentView* TourGuide::GetView() const
{
    return Needed(m_pWindow->GetView(), "no document is open");
}

const QImage& TourGuide::GetComposition() const
{
    return GetPixels()->GetComposition();
}

QString TourGuide::FileFor(const QString& name) const
{
    return m_files.filePath(name);
}

void TourGuide::Step(const char* name, const char* caption, const Act& act)
{
    // What came too late for the step before.
    if (m_report.HasFailed())
        m_robot.ClearScreen();
    m_report.Begin(QString::fromLatin1(name), QString::fromLatin1(caption));
    // After a dialog, a window manager may leave it to the person to make the window active again.
    if (!QApplication::activeWindow())
        m_pWindow->activateWindow();
    m_robot.WaitFor([] { return QApplication::activeWindow() != nullptr; });
    Attempt(act);
    m_robot.Settle();
    TakePicture();
    if (m_report.HasFailed())
        m_robot.ClearScreen();
    m_report.End();
}

void TourGuide::Attempt(const Act& act)
{
    try
    {
        act(*this);
    }
    catch (const StepEnded& end)
    {
        Fail(end.GetReason());
    }
    // At once: it may refer to what the act had.
    Check(!m_robot.IsWaitingForModal(), "the dialog did not come");
    m_robot.ForgetModal();
}

void TourGuide::Fail(const QString& reason)
{
    m_report.Fail(reason);
}

void TourGuide::Note(const QString& text)
{
    m_report.Note(text);
}

void TourGuide::TakePicture()
{
    m_report.TakePicture(m_pWindow.get());
}

void TourGuide::TakePictureOf(QWidget* widget, const QString& name)
{
    if (Check(widget, QStringLiteral("there is nothing to show as %1").arg(name)))
        m_report.TakePictureOf(widget, name);
}

void TourGuide::ActAmidScan(QWidget* dialog, const Act& act)
{
    const auto* manager = Control<KXAddToBatchManager>(dialog);
    const auto* file = Control<QLabel>(dialog, "m_pFile");
    const auto isDone = std::make_shared<bool>(false);
    const QObject lifetime;
    QObject::connect(
        manager, &KXAddToBatchManager::Progress, &lifetime,
        [this, file, act, isDone](int value)
        {
            if (*isDone || value == 0 || QFileInfo(file->text()).suffix().isEmpty())
                return;
            *isDone = true;
            act(*this);
        },
        Qt::QueuedConnection);
    Check(m_robot.WaitFor([&isDone] { return *isDone; }), "the dialog names no file");
}

bool TourGuide::End()
{
    m_pWindow.reset();
    return m_report.Close();
}

QAbstractButton* TourGuide::ToolButton(const QString& name) const
{
    const QList<QToolButton*> buttons = Get<ToolBox>()->findChildren<QToolButton*>();
    for (QToolButton* button : buttons)
    {
        if (button->defaultAction() && button->defaultAction()->text() == name)
            return button;
    }
    return nullptr;
}

void TourGuide::ChooseTool(const QString& name)
{
    QAbstractButton* button = ToolButton(name);
    if (!Check(button && button->isVisible(), QStringLiteral("no button %1 in the tool box").arg(name)))
        return;
    m_robot.Click(button);
    Check(button->isChecked(), QStringLiteral("a click did not choose the tool %1").arg(name));
}

void TourGuide::FocusBox(QAbstractSpinBox* box)
{
    const auto click = [this](QWidget* widget) { m_robot.Click(widget, QPoint(20, widget->height() / 2)); };
    click(box);
    if ((box->focusPolicy() & Qt::ClickFocus) == Qt::ClickFocus)
    {
        Check(box->hasFocus(), "a click did not give the box the keyboard");
        return;
    }
    // It takes the keyboard by Tab only: back from a neighbour, since onwards lies the canvas.
    const QList<QAbstractSpinBox*> neighbours =
        box->parentWidget()->findChildren<QAbstractSpinBox*>(QString(), Qt::FindDirectChildrenOnly);
    click(neighbours.constLast());
    for (int i = 0; i < neighbours.size() && !box->hasFocus(); ++i)
        m_robot.Key(Qt::Key_Backtab, Qt::ShiftModifier);
    Check(box->hasFocus(), "Shift+Tab does not reach the box");
}

void TourGuide::TypeInto(QAbstractSpinBox* box, int value)
{
    if (!Check(box, "there is no such box"))
        return;
    FocusBox(box);
    m_robot.Key(Qt::Key_A, Qt::ControlModifier);
    m_robot.Type(QString::number(value));
    m_robot.Key(Qt::Key_Return);
}

void TourGuide::TypeOver(QAbstractSpinBox* box, const char* text)
{
    if (!Check(box, "the dialog has no such box"))
        return;
    m_robot.Click(box, QPoint(20, box->height() / 2));
    m_robot.Key(Qt::Key_A, Qt::ControlModifier);
    m_robot.Type(QString::fromLatin1(text));
}

void TourGuide::ChooseEntry(QComboBox* combo, int index)
{
    if (!Check(combo, "there is no such list"))
        return;
    m_robot.Click(combo);
    if (!Check(m_robot.WaitFor([combo] { return combo->view()->isVisible(); }), "the list did not open"))
        return;
    m_robot.Key(Qt::Key_Home);
    for (int i = 0; i < index; ++i)
        m_robot.Key(Qt::Key_Down);
    m_robot.Key(Qt::Key_Return);
    m_robot.WaitFor([combo] { return !combo->view()->isVisible(); });
    Check(combo->currentIndex() == index, QStringLiteral("the list shows %1").arg(combo->currentText()));
}

void TourGuide::SetChecked(QAbstractButton* button, bool checked)
{
    if (!Check(button, "there is no such button"))
        return;
    if (button->isChecked() != checked)
        m_robot.Click(button, QPoint(8, button->height() / 2));
    Check(button->isChecked() == checked, QStringLiteral("a click did not switch %1").arg(button->text()));
}

void TourGuide::VisitPopup(QAbstractButton* button, QWidget* popup, const Act& act)
{
    if (!Check(button && popup, "there is no such popup"))
        return;
    m_robot.Click(button);
    if (!Check(m_robot.WaitFor([popup] { return popup->isVisible(); }), "the popup did not open"))
        return;
    // While a window manager takes the window over, it is said to be elsewhere.
    Check(m_robot.WaitFor([button, popup] { return IsBeside(popup, button); }),
          QStringLiteral("the popup is at %1, %2").arg(popup->x()).arg(popup->y()));
    TakePicture();
    if (act)
        act(*this);
    // On a small screen it may lie over its button: one that goes by itself would come again by the click.
    if (popup->isVisible() && qobject_cast<KXPopupWindow*>(popup) &&
        PlaceOf(popup).contains(PlaceOf(button).center()))
        m_robot.Key(Qt::Key_Escape);
    else if (popup->isVisible())
        m_robot.Click(button);
    const auto isGone = [popup] { return !popup->isVisible(); };
    // A click that comes while a window manager still gives the popup back opens it again.
    if (!m_robot.WaitFor(isGone))
        m_robot.Key(Qt::Key_Escape);
    Check(m_robot.WaitFor(isGone), "the popup did not close");
    Check(!button->isChecked(), "the button stays checked");
    if (!m_pWindow->isActiveWindow())
        m_pWindow->activateWindow();
    Check(m_robot.WaitFor([this] { return m_pWindow->isActiveWindow(); }), "the window is not active");
}

void TourGuide::OpenMenu(int key)
{
    m_robot.Key(key, Qt::AltModifier, QChar(key).toLower());
    if (!m_robot.WaitFor([] { return QApplication::activePopupWidget() != nullptr; }))
        throw StepEnded(QStringLiteral("the menu did not open"));
}

void TourGuide::PressEntry(int key)
{
    m_robot.Key(key, Qt::NoModifier, QChar(key).toLower());
    Check(m_robot.WaitFor([] { return !QApplication::activePopupWidget(); }), "the menu stays open");
}

void TourGuide::FocusCanvas()
{
    GetView()->setFocus(Qt::OtherFocusReason);
    m_robot.Settle();
}

void TourGuide::UseContrast(const QPointF& point)
{
    FocusCanvas();
    m_robot.Type(QStringLiteral("d"));
    const QRgb there = PixelAt(point);
    if (qAlpha(there) > 127 && qGray(there) < 128)
        m_robot.Type(QStringLiteral("x"));
}

QPointF TourGuide::PointAt(double x, double y) const
{
    const QSize size = GetPixels()->GetSize();
    return QPointF(std::floor(x * (size.width() - 1)) + 0.5, std::floor(y * (size.height() - 1)) + 0.5);
}

QRgb TourGuide::PixelAt(const QPointF& point) const
{
    return GetComposition().pixelColor(PixelOf(point)).rgba();
}

int TourGuide::SelectedAt(const QPointF& point) const
{
    const QImage mask = GetPixels()->GetSelectionMask();
    return mask.valid(PixelOf(point)) ? qGray(mask.pixel(PixelOf(point))) : 0;
}

int TourGuide::PixelsFor(int screenPixels) const
{
    return qMax(1, int(std::ceil(screenPixels / GetView()->GetScale())));
}

QPointF TourGuide::HitPoint(const QPointF& point) const
{
    return GetView()->MapToDocument(GetView()->MapFromDocument(point).toPoint());
}

void TourGuide::ClickAt(const QPointF& point, Qt::KeyboardModifiers modifiers)
{
    m_robot.Click(GetView()->viewport(), GetView()->MapFromDocument(point).toPoint(), modifiers);
}

void TourGuide::Stroke(const QPointF& from, const QPointF& to, int points)
{
    QVector<QPointF> path;
    for (int i = 0; i <= points; ++i)
        path += from + (to - from) * i / points;
    Stroke(path);
}

void TourGuide::Stroke(const QVector<QPointF>& path)
{
    m_robot.Drag(GetView(), path);
    Check(m_robot.WaitFor([this] { return !GetPixels()->IsBeingEdited(); }), "the stroke does not end");
}

int TourGuide::UndoSteps() const
{
    return NeedDocument()->GetUndoStack()->index();
}

void TourGuide::Undo()
{
    m_robot.Key(Qt::Key_Z, Qt::ControlModifier);
}

void TourGuide::Drop(const QString& path)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path)});
    const QPoint middle = m_pWindow->rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_pWindow.get(), &enter);
    Check(enter.isAccepted(), "the window takes no file");
    QDropEvent drop(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_pWindow.get(), &drop);
    m_robot.Settle();
}

void TourGuide::DropAndReadMessage(const QString& path, const QString& expected)
{
    const Document* document = GetDocument();
    m_robot.WhenModal(
        [&](QWidget* box)
        {
            QString text;
            const QList<QLabel*> labels = box->findChildren<QLabel*>();
            for (const QLabel* label : labels)
                text += label->text();
            Check(text.contains(QFileInfo(path).fileName()),
                  QStringLiteral("the message does not name the file: %1").arg(text));
            Check(text.contains(expected), QStringLiteral("the message gives another reason: %1").arg(text));
            TakePicture();
            m_robot.Key(Qt::Key_Return);
        });
    Drop(path);
    Check(!m_robot.IsWaitingForModal(), "there was no message");
    m_robot.ForgetModal();
    Check(GetDocument() == document, "the open picture changed");
}

bool TourGuide::OpenDrawn(const QImage& image, const QString& name)
{
    const QString path = FileFor(name);
    const bool written = image.save(path);
    m_openBefore = m_pWindow->GetDocumentWindows();
    if (written)
        Drop(path);
    const bool open = written && GetDocument() && GetDocument()->GetPath() == path;
    return Check(open, QStringLiteral("%1 is not open").arg(name));
}

void TourGuide::CloseDiscarding()
{
    const int windows = m_pWindow->GetDocumentWindows().size();
    if (NeedDocument()->IsModified())
        m_robot.WhenModal(
            [this](QWidget* dialog)
            {
                const QList<QPushButton*> buttons = dialog->findChildren<QPushButton*>();
                for (QPushButton* button : buttons)
                {
                    if (button->text().remove(QLatin1Char('&')) == QLatin1String("Don't Save"))
                        m_robot.Click(button);
                }
            });
    m_robot.Key(Qt::Key_W, Qt::ControlModifier);
    m_robot.ForgetModal();
    Check(m_pWindow->GetDocumentWindows().size() == windows - 1, "the picture was not closed");
}

void TourGuide::LeaveDrawn()
{
    Attempt([](TourGuide& it) { it.ChooseTool("Brush"); });
    const QList<DocumentWindow*> windows = m_pWindow->GetDocumentWindows();
    for (DocumentWindow* window : windows)
    {
        if (m_openBefore.contains(window) || !m_pWindow->GetDocumentWindows().contains(window))
            continue;
        // One of those before may have come to the front.
        Get<KXMdiArea>()->setActiveSubWindow(window);
        Attempt([](TourGuide& it) { it.CloseDiscarding(); });
    }
}
