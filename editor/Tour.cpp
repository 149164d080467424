#include "Tour.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDragEnterEvent>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSettings>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTextStream>
#include <QUndoStack>
#include <QUrl>

#include <algorithm>
#include <cmath>
#include <memory>

#include "BrushTool.h"
#include "Document.h"
#include "DocumentWindow.h"
#include "KXBrushSettings.h"
#include "KXDialog.h"
#include "KXDocumentInterface.h"
#include "MainWindow.h"
#include "NVApplication.h"
#include "NVBrushToolbar.h"
#include "NVDocumentView.h"
#include "PatternSelectWidget.h"
#include "SamplePicture.h"
#include "TourReport.h"
#include "TourRobot.h"

namespace
{

// Colour channels may be one off by rounding on each side.
const int ColorTolerance = 3;

bool AreNear(QRgb one, QRgb other)
{
    return std::abs(qRed(one) - qRed(other)) <= ColorTolerance &&
        std::abs(qGreen(one) - qGreen(other)) <= ColorTolerance &&
        std::abs(qBlue(one) - qBlue(other)) <= ColorTolerance;
}

QRgb Multiplied(QRgb one, QRgb other)
{
    return qRgb(qRed(one) * qRed(other) / 255, qGreen(one) * qGreen(other) / 255,
                qBlue(one) * qBlue(other) / 255);
}

QString ColorText(QRgb color)
{
    return QColor(color).name();
}

class Tour
{
public:
    Tour(const QString& folder, const QString& picture);
    int Run();

private:
    void Step(const QString& name, const QString& caption, const std::function<void()>& act);
    void Check(bool ok, const QString& reason);

    void ShowEmptyWindow();
    void OpenPicture();
    void WorkBrushBar();
    void PaintNormal();
    void OpenSettings();
    void OpenPatterns();
    void PaintFillModes();
    void PaintMultiply();
    void PressDigits();
    void PaintLargest();
    void Zoom();
    void UndoAndRedo();
    void ChooseTheme(int theme, int menuKey);
    void DropBadFiles();
    void SaveAndReopen();
    void CloseUnsaved();

    QString FileFor(const QString& name) const { return m_files.filePath(name); }
    NVBrushToolbar* Bar() const { return m_pWindow->GetBrushTool()->GetBrushBar(); }
    QSpinBox* Box(const char* name) const { return Bar()->findChild<QSpinBox*>(QLatin1String(name)); }
    QPushButton* Button(const char* name) const
    {
        return Bar()->findChild<QPushButton*>(QLatin1String(name));
    }
    QComboBox* Combo(const char* name) const { return Bar()->findChild<QComboBox*>(QLatin1String(name)); }
    const QImage& Composition() const { return m_pWindow->GetDocument()->GetPixels()->GetComposition(); }
    QRgb PixelAt(double x, double y) const;
    QPointF PointAt(double x, double y) const;

    void TypeInto(QSpinBox* box, int value);
    void ChooseEntry(QComboBox* combo, int index);
    void Stroke(double fromX, double fromY, double toX, double toY, int points = 30);
    void PickColor(double x, double y);
    void Drop(const QString& path);
    void DropAndReadMessage(const QString& path, const QString& expected);
    void FocusCanvas();

    TourReport m_report;
    TourRobot m_robot;
    QTemporaryDir m_files;
    QString m_picture;
    std::unique_ptr<QSettings> m_pSettings;
    std::unique_ptr<MainWindow> m_pWindow;
};

Tour::Tour(const QString& folder, const QString& picture) : m_report(folder), m_picture(picture) { }

int Tour::Run()
{
    if (!m_report.IsReady() || !m_files.isValid())
    {
        QTextStream(stderr) << "The folder for the pictures could not be made.\n";
        return 1;
    }
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    m_pSettings = std::make_unique<QSettings>(FileFor(QStringLiteral("tour.ini")), QSettings::IniFormat);
    m_pSettings->setValue(QStringLiteral("files/folder"), m_files.path());
    m_pWindow = std::make_unique<MainWindow>(m_pSettings.get());
    m_robot.SetHome(m_pWindow.get());
    ShowEmptyWindow();
    OpenPicture();
    if (m_pWindow->GetDocument())
    {
        WorkBrushBar();
        PaintNormal();
        OpenSettings();
        OpenPatterns();
        PaintFillModes();
        PaintMultiply();
        PressDigits();
        PaintLargest();
        Zoom();
        UndoAndRedo();
        ChooseTheme(1, Qt::Key_D);
        ChooseTheme(2, Qt::Key_H);
        ChooseTheme(0, Qt::Key_L);
        DropBadFiles();
        SaveAndReopen();
        CloseUnsaved();
    }
    m_pWindow.reset();
    return m_report.Close() ? 0 : 1;
}

void Tour::Step(const QString& name, const QString& caption, const std::function<void()>& act)
{
    m_report.Begin(name, caption);
    act();
    m_robot.Settle();
    Check(!m_robot.IsWaitingForModal(), QStringLiteral("the dialog did not come"));
    m_report.TakePicture(m_pWindow.get());
    m_report.End();
}

void Tour::Check(bool ok, const QString& reason)
{
    if (!ok)
        m_report.Fail(reason);
}

void Tour::ShowEmptyWindow()
{
    Step(QStringLiteral("empty-window"), QStringLiteral("The window without a picture"),
         [this]
         {
             // A screen that nobody sees is no reason to squeeze the window.
             const bool isSeen = QGuiApplication::platformName() != QLatin1String("offscreen");
             const QSize wanted(1280, 860);
             m_pWindow->resize(isSeen ? m_pWindow->screen()->availableSize().boundedTo(wanted) : wanted);
             m_pWindow->move(m_pWindow->screen()->availableGeometry().topLeft());
             m_pWindow->show();
             m_pWindow->activateWindow();
             if (!m_robot.WaitFor([this] { return m_pWindow->isActiveWindow(); }))
                 QApplication::setActiveWindow(m_pWindow.get());
             Check(m_pWindow->isActiveWindow(), QStringLiteral("the window is not active"));
             Check(!m_pWindow->GetDocument(), QStringLiteral("there is a document"));
             Check(Bar()->isVisible(), QStringLiteral("the brush bar is not to be seen"));
         });
}

void Tour::OpenPicture()
{
    Step(QStringLiteral("picture-open"), QStringLiteral("A picture dropped on the window"),
         [this]
         {
             if (m_picture.isEmpty())
             {
                 m_picture = FileFor(QStringLiteral("landscape.jpg"));
                 Check(DrawSamplePicture(QSize(6000, 4000)).save(m_picture),
                       QStringLiteral("no picture was written"));
             }
             QElapsedTimer time;
             time.start();
             m_robot.WhenModal(
                 [this](QWidget*)
                 {
                     m_report.TakePicture(m_pWindow.get());
                     m_robot.Key(Qt::Key_Escape);
                 });
             Drop(m_picture);
             m_robot.ForgetModal();
             Check(m_pWindow->GetDocument(), QStringLiteral("no document is open"));
             if (!m_pWindow->GetDocument())
                 return;
             const QSize size = m_pWindow->GetDocument()->GetPixels()->GetSize();
             m_report.Note(QStringLiteral("%1 x %2 pixels, opened in %3 ms")
                               .arg(size.width())
                               .arg(size.height())
                               .arg(time.elapsed()));
             Check(m_pWindow->GetView()->hasFocus(), QStringLiteral("the canvas has not the keyboard"));
         });
}

void Tour::WorkBrushBar()
{
    Step(QStringLiteral("brush-bar"), QStringLiteral("Size, spacing and opacity typed into the boxes"),
         [this]
         {
             TypeInto(Box("m_pSizeSpn"), 160);
             TypeInto(Box("m_pSpacingSpn"), 15);
             TypeInto(Box("m_pOpacitySpn"), 80);
             Check(Bar()->GetSize() == 160, QStringLiteral("the size is %1").arg(Bar()->GetSize()));
             Check(Bar()->GetSpacing() == 15, QStringLiteral("the spacing is %1").arg(Bar()->GetSpacing()));
             Check(Bar()->GetOpacity() == 80, QStringLiteral("the opacity is %1").arg(Bar()->GetOpacity()));
             Check(Bar()->GetBrushes()->GetSize() == 160,
                   QStringLiteral("the settings popup has another size"));
             Check(m_pWindow->GetView()->hasFocus(),
                   QStringLiteral("Enter did not give the keyboard to the canvas"));
         });
}

void Tour::PaintNormal()
{
    Step(QStringLiteral("stroke-normal"), QStringLiteral("A stroke in Normal"),
         [this]
         {
             TypeInto(Box("m_pOpacitySpn"), 100);
             m_robot.Key(Qt::Key_D, Qt::NoModifier, QStringLiteral("d"));
             m_robot.Key(Qt::Key_X, Qt::NoModifier, QStringLiteral("x"));
             Check(NVApplication::GetForeground() == QColor(Qt::white),
                   QStringLiteral("D and X did not give white"));
             const int steps = m_pWindow->GetDocument()->GetUndoStack()->count();
             Stroke(0.08, 0.12, 0.40, 0.22);
             Check(AreNear(PixelAt(0.24, 0.17), qRgb(255, 255, 255)),
                   QStringLiteral("the middle of the stroke is %1").arg(ColorText(PixelAt(0.24, 0.17))));
             Check(m_pWindow->GetDocument()->GetUndoStack()->count() == steps + 1,
                   QStringLiteral("the stroke is not one undo step"));
             Check(m_pWindow->isWindowModified(), QStringLiteral("the title does not tell of the change"));
         });
}

void Tour::OpenSettings()
{
    Step(QStringLiteral("brush-settings"), QStringLiteral("The brush settings popup"),
         [this]
         {
             KXBrushSettings* popup = Bar()->GetBrushes();
             m_robot.Click(Button("m_pSelectBrushBtn"));
             Check(m_robot.WaitFor([popup] { return popup->isVisible(); }),
                   QStringLiteral("the popup did not open"));
             m_report.TakePicture(m_pWindow.get());
             m_robot.Click(Button("m_pSelectBrushBtn"));
             Check(m_robot.WaitFor([popup] { return !popup->isVisible(); }),
                   QStringLiteral("the second click did not close the popup"));
             Check(!Button("m_pSelectBrushBtn")->isChecked(), QStringLiteral("the button stays checked"));
         });
}

void Tour::OpenPatterns()
{
    Step(QStringLiteral("patterns"), QStringLiteral("A pattern picked by click, and one by double click"),
         [this]
         {
             PatternSelectWidget* popup = Bar()->GetPatterns();
             m_robot.Click(Button("m_pSelectPatternBtn"));
             Check(m_robot.WaitFor([popup] { return popup->isVisible(); }),
                   QStringLiteral("the popup did not open"));
             auto* tiles = popup->findChild<QListView*>();
             if (!tiles || popup->Count() < 9)
             {
                 Check(false, QStringLiteral("there are no tiles"));
                 return;
             }
             const auto tile = [tiles](int row)
             { return tiles->visualRect(tiles->model()->index(row, 0)).center(); };
             m_robot.Click(tiles->viewport(), tile(2));
             Check(NVApplication::GetTexturePatternIndex() == 2,
                   QStringLiteral("the click did not select the tile"));
             Check(popup->isVisible(), QStringLiteral("the click closed the popup"));
             m_report.TakePicture(m_pWindow.get());
             m_robot.DoubleClick(tiles->viewport(), tile(8));
             Check(m_robot.WaitFor([popup] { return !popup->isVisible(); }),
                   QStringLiteral("the double click did not close the popup"));
             Check(NVApplication::GetTexturePatternIndex() == 8,
                   QStringLiteral("the double click did not select the tile"));
             Check(!Button("m_pSelectPatternBtn")->isChecked(), QStringLiteral("the button stays checked"));
         });
}

void Tour::PaintFillModes()
{
    Step(QStringLiteral("fill-modes"), QStringLiteral("A stroke in each of the six fill modes"),
         [this]
         {
             m_robot.Key(Qt::Key_D, Qt::NoModifier, QStringLiteral("d"));
             PickColor(0.02, 0.02);
             for (int mode = 0; mode < 6; ++mode)
             {
                 const double y = 0.30 + 0.08 * mode;
                 const QRgb before[] = {PixelAt(0.3, y), PixelAt(0.7, y)};
                 ChooseEntry(Combo("m_pFillModeCombo"), mode);
                 Check(Bar()->GetStyle() == mode, QStringLiteral("mode %1 was not chosen").arg(mode));
                 Stroke(0.1, y, 0.9, y, 60);
                 Check(PixelAt(0.3, y) != before[0] || PixelAt(0.7, y) != before[1],
                       QStringLiteral("the stroke in mode %1 changed nothing").arg(mode));
             }
             ChooseEntry(Combo("m_pFillModeCombo"), 0);
             m_report.TakePicture(m_pWindow.get());
             m_robot.Key(Qt::Key_1, Qt::ControlModifier);
             m_report.TakePicture(m_pWindow.get());
             m_robot.Key(Qt::Key_0, Qt::ControlModifier);
         });
}

void Tour::PaintMultiply()
{
    Step(QStringLiteral("stroke-multiply"), QStringLiteral("A stroke in Multiply, chosen by Alt+Shift+M"),
         [this]
         {
             PickColor(0.05, 0.5);
             FocusCanvas();
             m_robot.Key(Qt::Key_M, Qt::AltModifier | Qt::ShiftModifier);
             Check(Bar()->GetBlendMode() == 1,
                   QStringLiteral("the blend mode is %1").arg(Bar()->GetBlendMode()));
             const QRgb before = PixelAt(0.8, 0.2);
             Stroke(0.6, 0.2, 0.95, 0.2);
             const QRgb expected = Multiplied(before, NVApplication::GetForeground().rgb());
             Check(AreNear(PixelAt(0.8, 0.2), expected),
                   QStringLiteral("%1 instead of %2").arg(ColorText(PixelAt(0.8, 0.2)), ColorText(expected)));
             m_report.TakePicture(m_pWindow.get());
             m_robot.Key(Qt::Key_N, Qt::AltModifier | Qt::ShiftModifier);
             Check(Bar()->GetBlendMode() == 0, QStringLiteral("Alt+Shift+N did not go back to Normal"));
         });
}

void Tour::PressDigits()
{
    Step(QStringLiteral("digits"), QStringLiteral("Digits set the opacity, or go into the focused box"),
         [this]
         {
             FocusCanvas();
             m_robot.Type(QStringLiteral("5"));
             Check(Bar()->GetOpacity() == 50,
                   QStringLiteral("5 gave the opacity %1").arg(Bar()->GetOpacity()));
             QSpinBox* box = Box("m_pSizeSpn");
             m_robot.Click(box, QPoint(20, box->height() / 2));
             m_robot.Key(Qt::Key_A, Qt::ControlModifier);
             m_robot.Type(QStringLiteral("64"));
             Check(box->cleanText() == QLatin1String("64"),
                   QStringLiteral("the box shows %1").arg(box->text()));
             Check(Bar()->GetOpacity() == 50, QStringLiteral("a digit in the box changed the opacity"));
             m_report.TakePicture(m_pWindow.get());
             m_robot.Key(Qt::Key_Return);
             Check(Bar()->GetSize() == 64, QStringLiteral("the size is %1").arg(Bar()->GetSize()));
             m_robot.Type(QStringLiteral("0"));
             Check(Bar()->GetOpacity() == 100,
                   QStringLiteral("0 gave the opacity %1").arg(Bar()->GetOpacity()));
         });
}

void Tour::PaintLargest()
{
    Step(QStringLiteral("largest-brush"), QStringLiteral("A stroke with the brush of 2500 pixels"),
         [this]
         {
             TypeInto(Box("m_pSizeSpn"), 2500);
             TypeInto(Box("m_pOpacitySpn"), 40);
             QVector<double> frames;
             QElapsedTimer clock;
             const auto connection = QObject::connect(m_pWindow->GetBrushTool(), &BrushTool::FrameDone,
                                                      [&frames, &clock](const QRect&, double)
                                                      {
                                                          if (clock.isValid())
                                                              frames += double(clock.nsecsElapsed()) / 1e6;
                                                          clock.start();
                                                      });
             const QRgb before = PixelAt(0.5, 0.5);
             QElapsedTimer whole;
             whole.start();
             Stroke(0.3, 0.4, 0.7, 0.6, 60);
             QObject::disconnect(connection);
             Check(PixelAt(0.5, 0.5) != before, QStringLiteral("the stroke changed nothing"));
             Check(!frames.isEmpty(), QStringLiteral("there were no frames"));
             std::sort(frames.begin(), frames.end());
             if (!frames.isEmpty())
                 m_report.Note(
                     QStringLiteral(
                         "%1 frames in %2 ms; from frame to frame %3 ms in the middle, %4 ms at most")
                         .arg(frames.size() + 1)
                         .arg(whole.elapsed())
                         .arg(frames.at(frames.size() / 2), 0, 'f', 1)
                         .arg(frames.constLast(), 0, 'f', 1));
             m_report.TakePicture(m_pWindow.get());
             m_robot.Key(Qt::Key_Z, Qt::ControlModifier);
             Check(PixelAt(0.5, 0.5) == before, QStringLiteral("undo did not bring the picture back"));
             TypeInto(Box("m_pSizeSpn"), 160);
             TypeInto(Box("m_pOpacitySpn"), 100);
         });
}

void Tour::Zoom()
{
    Step(QStringLiteral("zoom"), QStringLiteral("Zoomed in by keys, and moved with the hand tool"),
         [this]
         {
             NVDocumentView* view = m_pWindow->GetView();
             FocusCanvas();
             const double fit = view->GetScale();
             m_robot.Key(Qt::Key_Plus, Qt::ControlModifier);
             Check(view->GetScale() > fit, QStringLiteral("Ctrl++ did not zoom in"));
             m_robot.Key(Qt::Key_Minus, Qt::ControlModifier);
             Check(std::abs(view->GetScale() / fit - 1) < 0.01, QStringLiteral("Ctrl+- did not zoom out"));
             m_robot.Key(Qt::Key_1, Qt::ControlModifier);
             Check(std::abs(view->GetScale() - 1) < 0.001, QStringLiteral("Ctrl+1 did not give 100 %"));
             m_robot.Key(Qt::Key_H, Qt::NoModifier, QStringLiteral("h"));
             const QPointF before = view->MapToDocument(QPointF());
             const QPoint middle = view->viewport()->rect().center();
             m_robot.Drag(view, {view->MapToDocument(middle), view->MapToDocument(middle - QPoint(100, 60))});
             m_robot.Settle();
             const QPointF way = view->MapToDocument(QPointF()) - before;
             Check(std::abs(way.x() - 100) < 2 && std::abs(way.y() - 60) < 2,
                   QStringLiteral("the hand moved the picture by %1, %2").arg(way.x()).arg(way.y()));
             m_report.TakePicture(m_pWindow.get());
             m_robot.Key(Qt::Key_B, Qt::NoModifier, QStringLiteral("b"));
             m_robot.Key(Qt::Key_0, Qt::ControlModifier);
             Check(std::abs(view->GetScale() / fit - 1) < 0.01,
                   QStringLiteral("Ctrl+0 did not fit the picture"));
             Check(Bar()->isVisible(), QStringLiteral("B did not bring the brush back"));
         });
}

void Tour::UndoAndRedo()
{
    Step(QStringLiteral("undo-redo"), QStringLiteral("The last stroke undone and done again"),
         [this]
         {
             FocusCanvas();
             const QRgb before = PixelAt(0.5, 0.85);
             Stroke(0.2, 0.85, 0.8, 0.85);
             const QRgb after = PixelAt(0.5, 0.85);
             Check(before != after, QStringLiteral("the stroke changed nothing"));
             m_robot.Key(Qt::Key_Z, Qt::ControlModifier);
             Check(PixelAt(0.5, 0.85) == before, QStringLiteral("undo left the stroke"));
             m_report.TakePicture(m_pWindow.get());
             m_robot.Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
             Check(PixelAt(0.5, 0.85) == after, QStringLiteral("redo did not bring the stroke back"));
         });
}

void Tour::ChooseTheme(int theme, int menuKey)
{
    const char* const names[] = {"light-theme", "dark-theme", "high-contrast"};
    const char* const captions[] = {"Back in the light theme", "The dark theme, chosen in the menu",
                                    "The high-contrast theme"};
    Step(QLatin1String(names[theme]), QLatin1String(captions[theme]),
         [this, menuKey, theme]
         {
             const auto press = [this](int key, Qt::KeyboardModifiers modifiers)
             {
                 m_robot.Key(key, modifiers, QChar(key).toLower());
                 m_robot.WaitFor([] { return QApplication::activePopupWidget() != nullptr; });
             };
             press(Qt::Key_V, Qt::AltModifier);
             press(Qt::Key_T, Qt::NoModifier);
             m_robot.WaitFor(
                 []
                 { return QApplication::activePopupWidget()->objectName() == QLatin1String("ThemeMenu"); });
             m_report.TakePicture(m_pWindow.get());
             m_robot.Key(menuKey, Qt::NoModifier, QChar(menuKey).toLower());
             Check(m_robot.WaitFor([theme] { return NVApplication::GetInstance()->GetTheme() == theme; }),
                   QStringLiteral("the theme was not switched"));
             Check(m_robot.WaitFor([] { return !QApplication::activePopupWidget(); }),
                   QStringLiteral("the menu stays open"));
         });
}

void Tour::DropBadFiles()
{
    Step(QStringLiteral("bad-files"), QStringLiteral("Files that are no pictures, or not whole ones"),
         [this]
         {
             QFile text(FileFor(QStringLiteral("no picture.png")));
             Check(text.open(QIODevice::WriteOnly) && text.write("This is not a picture.") > 0,
                   QStringLiteral("no file to try"));
             text.close();
             DropAndReadMessage(text.fileName(), QStringLiteral("known formats"));

             const QString whole = FileFor(QStringLiteral("cut short.jpg"));
             Check(DrawSamplePicture(QSize(800, 600)).save(whole), QStringLiteral("no file to try"));
             Check(QFile::resize(whole, 20000), QStringLiteral("no file to try"));
             DropAndReadMessage(whole, QStringLiteral("cut short"));
             DropAndReadMessage(FileFor(QStringLiteral("nowhere.png")), QStringLiteral("does not exist"));
         });
}

void Tour::SaveAndReopen()
{
    Step(QStringLiteral("save-reopen"), QStringLiteral("A new picture painted, saved and opened again"),
         [this]
         {
             m_robot.WhenModal(
                 [this](QWidget* dialog)
                 {
                     m_report.TakePicture(m_pWindow.get());
                     Check(dialog->inherits("NewDocumentDialog"), QStringLiteral("another dialog came"));
                     m_robot.Key(Qt::Key_Return);
                 });
             m_robot.Key(Qt::Key_N, Qt::ControlModifier);
             Check(m_pWindow->GetDocumentWindows().size() == 2, QStringLiteral("there is no new picture"));
             ChooseEntry(Combo("m_pFillModeCombo"), 5);
             Stroke(0.1, 0.2, 0.9, 0.8, 40);
             ChooseEntry(Combo("m_pFillModeCombo"), 0);
             const QImage painted = Composition().copy();

             const QString path = FileFor(QStringLiteral("painted.png"));
             m_robot.WhenModal(
                 [this, &path](QWidget* dialog)
                 {
                     auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
                     Check(name, QStringLiteral("the dialog takes no name"));
                     if (name)
                         name->setText(path);
                     m_robot.Key(Qt::Key_Return);
                 });
             m_robot.Key(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
             Check(m_robot.WaitFor([&path] { return QFile::exists(path); }),
                   QStringLiteral("no file was written"));
             Check(!m_pWindow->GetDocument()->IsModified(),
                   QStringLiteral("the picture still counts as changed"));
             m_robot.Key(Qt::Key_W, Qt::ControlModifier);
             Check(m_pWindow->GetDocumentWindows().size() == 1, QStringLiteral("the picture was not closed"));
             Drop(path);
             Check(m_pWindow->GetDocument()->GetPath() == path,
                   QStringLiteral("the file was not opened again"));
             Check(Composition() == painted, QStringLiteral("the pixels are not what they were"));
         });
}

void Tour::CloseUnsaved()
{
    Step(QStringLiteral("close-unsaved"),
         QStringLiteral("A picture with unsaved changes asks before it is closed"),
         [this]
         {
             FocusCanvas();
             Stroke(0.1, 0.8, 0.9, 0.2);
             const Document* document = m_pWindow->GetDocument();
             m_robot.WhenModal(
                 [this](QWidget*)
                 {
                     m_report.TakePicture(m_pWindow.get());
                     m_robot.Key(Qt::Key_Escape);
                 });
             m_robot.Key(Qt::Key_W, Qt::ControlModifier);
             Check(m_pWindow->GetDocument() == document, QStringLiteral("Escape closed the picture"));
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
             Check(m_pWindow->GetDocumentWindows().size() == 1, QStringLiteral("the picture was not closed"));
             Check(m_pWindow->GetView()->width() > m_pWindow->width() / 2,
                   QStringLiteral("the other picture is small"));
         });
}

QRgb Tour::PixelAt(double x, double y) const
{
    return Composition().pixel(PointAt(x, y).toPoint());
}

QPointF Tour::PointAt(double x, double y) const
{
    const QSize size = m_pWindow->GetDocument()->GetPixels()->GetSize();
    return QPointF(x * (size.width() - 1), y * (size.height() - 1));
}

void Tour::TypeInto(QSpinBox* box, int value)
{
    m_robot.Click(box, QPoint(20, box->height() / 2));
    Check(box->hasFocus(), QStringLiteral("a click did not give the box the keyboard"));
    m_robot.Key(Qt::Key_A, Qt::ControlModifier);
    m_robot.Type(QString::number(value));
    m_robot.Key(Qt::Key_Return);
}

void Tour::ChooseEntry(QComboBox* combo, int index)
{
    m_robot.Click(combo);
    Check(m_robot.WaitFor([combo] { return combo->view()->isVisible(); }),
          QStringLiteral("the list did not open"));
    m_robot.Key(Qt::Key_Home);
    for (int i = 0; i < index; ++i)
        m_robot.Key(Qt::Key_Down);
    m_robot.Key(Qt::Key_Return);
    m_robot.WaitFor([combo] { return !combo->view()->isVisible(); });
    Check(combo->currentIndex() == index, QStringLiteral("the list shows %1").arg(combo->currentText()));
}

void Tour::Stroke(double fromX, double fromY, double toX, double toY, int points)
{
    QVector<QPointF> path;
    for (int i = 0; i <= points; ++i)
    {
        const double t = double(i) / points;
        path += PointAt(fromX + t * (toX - fromX), fromY + t * (toY - fromY));
    }
    m_robot.Drag(m_pWindow->GetView(), path);
    Check(m_robot.WaitFor([this] { return !m_pWindow->GetBrushTool()->IsStrokeRunning(); }),
          QStringLiteral("the stroke does not end"));
}

void Tour::PickColor(double x, double y)
{
    NVDocumentView* view = m_pWindow->GetView();
    m_robot.Click(view->viewport(), view->MapFromDocument(PointAt(x, y)).toPoint(), Qt::AltModifier);
    m_robot.Settle();
    const QPointF hit = view->MapToDocument(view->MapFromDocument(PointAt(x, y)).toPoint());
    const QPoint pixel(int(std::floor(hit.x())), int(std::floor(hit.y())));
    Check(NVApplication::GetForeground().rgb() == (Composition().pixel(pixel) | 0xff000000),
          QStringLiteral("Alt and a click did not pick the colour"));
}

void Tour::Drop(const QString& path)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path)});
    const QPoint middle = m_pWindow->rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_pWindow.get(), &enter);
    Check(enter.isAccepted(), QStringLiteral("the window takes no file"));
    QDropEvent drop(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_pWindow.get(), &drop);
    m_robot.Settle();
}

void Tour::DropAndReadMessage(const QString& path, const QString& expected)
{
    const Document* document = m_pWindow->GetDocument();
    m_robot.WhenModal(
        [this, &path, &expected](QWidget* box)
        {
            QString text;
            const QList<QLabel*> labels = box->findChildren<QLabel*>();
            for (const QLabel* label : labels)
                text += label->text();
            Check(text.contains(QFileInfo(path).fileName()),
                  QStringLiteral("the message does not name the file: %1").arg(text));
            Check(text.contains(expected), QStringLiteral("the message gives another reason: %1").arg(text));
            m_report.TakePicture(m_pWindow.get());
            m_robot.Key(Qt::Key_Return);
        });
    Drop(path);
    Check(m_pWindow->GetDocument() == document, QStringLiteral("the open picture changed"));
}

void Tour::FocusCanvas()
{
    m_pWindow->GetView()->setFocus(Qt::OtherFocusReason);
    m_robot.Settle();
}

} // namespace

int RunTour(const QString& folder, const QString& picture)
{
    return Tour(folder, picture).Run();
}
