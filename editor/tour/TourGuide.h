#pragma once

#include <QColor>
#include <QPointF>
#include <QTemporaryDir>
#include <QVector>

#include <functional>
#include <memory>

#include "MainWindow.h"
#include "TourReport.h"
#include "TourRobot.h"

class DocumentWindow;
class KXDocumentInterface;
class NVDocumentView;
class QAbstractButton;
class QAbstractSpinBox;
class QComboBox;
class QImage;
class QSettings;

// The pixel that the point lies in.
QPoint PixelOf(const QPointF& point);
// Colour channels may be off by rounding.
bool AreNear(QRgb one, QRgb other, int tolerance = 3);
QString ColorText(QRgb color);
// The two colours in blend mode Multiply, both opaque.
QRgb Multiplied(QRgb one, QRgb other);

// The control of a bar that has this object name. Ends the step if there is none.
template <class Widget>
Widget* Control(const QWidget* bar, const char* name)
{
    return Needed(bar ? bar->findChild<Widget*>(QLatin1String(name)) : nullptr,
                  QStringLiteral("there is no control %1").arg(QLatin1String(name)));
}

// The same where the kind alone says which one.
template <class Widget>
Widget* Control(const QWidget* window)
{
    return Needed(window ? window->findChild<Widget*>() : nullptr,
                  QStringLiteral("there is no %1").arg(QLatin1String(Widget::staticMetaObject.className())));
}

// Leads through the program: has the window, with settings of its own, the hands that work it and the report
// of what came of it. A topic of the tour plays its steps through it. A step that fails, or ends before its
// time by StepEnded, does no harm to the next one. Points are in document pixels.
class TourGuide
{
public:
    using Act = std::function<void(TourGuide&)>;

    // The picture is the person's, empty for none.
    TourGuide(const QString& folder, const QString& picture);
    ~TourGuide();

    // False when a folder could not be made; there is no window then.
    bool IsReady() const;
    QString GetPicture() const;
    MainWindow* GetWindow() const;
    TourRobot& GetRobot();
    // Null while no document is open.
    Document* GetDocument() const;
    // These end the step then.
    Document* NeedDocument() const;
    KXDocumentInterface* GetPixels() const;
    NVDocumentView* GetView() const;
    const QImage& GetComposition() const;
    // A file in a folder that goes with the guide.
    QString FileFor(const QString& name) const;
    // The bar, panel or other part of the window of this class. Null until the window has made it.
    template <class Widget>
    Widget* Find() const;
    // The same, but ends the step if there is none.
    template <class Widget>
    Widget* Get() const;

    // Plays a step: a line and at least one picture of the report, taken when the act is over. The name is
    // part of the pictures' file names. After a failure, menus and dialogs that stayed open are closed.
    void Step(const char* name, const char* caption, const Act& act);
    // Notes it as a failure of the step when the expectation was not met. Returns whether it was.
    bool Check(bool ok, const QString& reason)
    {
        if (!ok)
            Fail(reason);
        return ok;
    }
    bool Check(bool ok, const char* reason) { return Check(ok, QString::fromLatin1(reason)); }
    void Note(const QString& text);
    void TakePicture();
    // A picture of the widget alone, under a name of its own: what documentation shows.
    void TakePictureOf(QWidget* widget, const QString& name);
    // Acts at a moment at which the dialog of a scan names a file, as it does when it paints itself. Where
    // the event loop waits, the next folder has mostly begun and no file has been named yet.
    void ActAmidScan(QWidget* dialog, const Act& act);
    // Closes the window and writes the page; true if all went well.
    bool End();

    // By its button in the tool box; the name is the tool's, in English where it is written out.
    void ChooseTool(const QString& name);
    void ChooseTool(const char* name) { ChooseTool(QString::fromLatin1(name)); }
    // A control that is null is a failure of the step, as is a list or a popup that does not open.
    void TypeInto(QAbstractSpinBox* box, int value);
    // The same in a dialog, where Enter would be its end.
    void TypeOver(QAbstractSpinBox* box, const char* text);
    void ChooseEntry(QComboBox* combo, int index);
    void SetChecked(QAbstractButton* button, bool checked);
    // Opens the popup by a click on its button, takes a picture, lets the act work in it, and closes it by a
    // second click.
    void VisitPopup(QAbstractButton* button, QWidget* popup, const Act& act = Act());
    // Opens a menu of the menu bar by Alt and its key. Ends the step if it does not open: the key of its
    // entry would go elsewhere.
    void OpenMenu(int key);
    // Presses the key of an entry of the open menu, which closes with it.
    void PressEntry(int key);
    void FocusCanvas();
    // Black on white, or white on black where the point is dark: a stroke there is sure to be seen.
    void UseContrast(const QPointF& point);

    // Relative to the document: 0, 0 is the first pixel, 1, 1 the last. The middle of a pixel.
    QPointF PointAt(double x, double y) const;
    QRgb PixelAt(const QPointF& point) const;
    // How far it is selected, 0 to 255.
    int SelectedAt(const QPointF& point) const;
    // Document pixels that are this long on the screen now, at least one.
    int PixelsFor(int screenPixels) const;
    // The screen has whole pixels: the point that the pointer hits when it goes for this one.
    QPointF HitPoint(const QPointF& point) const;
    void ClickAt(const QPointF& point, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    // A straight drag, and the wait for the end of what it starts.
    void Stroke(const QPointF& from, const QPointF& to, int points = 30);
    void Stroke(const QVector<QPointF>& path);
    // Steps that can be undone now.
    int UndoSteps() const;
    void Undo();

    void Drop(const QString& path);
    // The file cannot be opened: the message must name it and give the expected reason.
    void DropAndReadMessage(const QString& path, const QString& expected);
    // Writes the image as a PNG file and drops it on the window. False if it is not open then.
    bool OpenDrawn(const QImage& image, const QString& name);
    // Closes the document; a question about changes is answered by Don't Save.
    void CloseDiscarding();
    // The end of a topic on a drawn picture: the brush again, and the picture that was there before. Closes
    // what else the topic has left open.
    void LeaveDrawn();

private:
    void Fail(const QString& reason);
    // Lets the act do what it can, until it ends or ends the step.
    void Attempt(const Act& act);
    QAbstractButton* ToolButton(const QString& name) const;
    void FocusBox(QAbstractSpinBox* box);

    TourReport m_report;
    TourRobot m_robot;
    QTemporaryDir m_files;
    QString m_picture;
    // Those that were open before the last drawn one.
    QList<DocumentWindow*> m_openBefore;
    std::unique_ptr<QSettings> m_pSettings;
    std::unique_ptr<MainWindow> m_pWindow;
};

template <class Widget>
Widget* TourGuide::Find() const
{
    // By the language's own types: not every class is known to the toolkit by name.
    const QList<QWidget*> all = m_pWindow->findChildren<QWidget*>();
    for (QWidget* widget : all)
    {
        if (auto* found = dynamic_cast<Widget*>(widget))
            return found;
    }
    return nullptr;
}

template <class Widget>
Widget* TourGuide::Get() const
{
    return Needed(Find<Widget>(),
                  QStringLiteral("there is no %1").arg(QLatin1String(Widget::staticMetaObject.className())));
}
