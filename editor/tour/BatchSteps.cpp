// The batch window: a folder tree scanned, a job run on it, and its report.

#include <QBuffer>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTabWidget>

#include "BatchJob.h"
#include "BatchTreeView.h"
#include "BatchWindow.h"
#include "KXAddToBatchDialog.h"
#include "NVSpinBox.h"
#include "Thumbnails.h"
#include "TourGuide.h"
#include "TourPictures.h"
#include "TourTopics.h"

namespace
{

const int Years = 12;
const int Months = 12;
const int PicturesAMonth = 6;
// Times that the robot waits for the window.
const int Patience = 6;

QString Root(TourGuide& guide)
{
    return guide.FileFor(QStringLiteral("Photographs"));
}

BatchWindow* Window(const TourGuide& guide)
{
    return Needed(guide.GetWindow()->GetBatchWindow(), "there is no batch window");
}

// The window's button of this text, which is to be seen.
QPushButton* Button(const BatchWindow* window, const char* text)
{
    const QList<QPushButton*> all = window->findChildren<QPushButton*>();
    for (QPushButton* button : all)
    {
        if (button->isVisible() && button->text().remove(QLatin1Char('&')) == QLatin1String(text))
            return button;
    }
    return nullptr;
}

void Press(TourGuide& guide, const char* text)
{
    QPushButton* button = Button(Window(guide), text);
    if (guide.Check(button && button->isEnabled(), QStringLiteral("no button %1").arg(QLatin1String(text))))
        guide.GetRobot().Click(button);
}

bool WaitForIdle(TourGuide& guide)
{
    const auto isIdle = [&guide] { return Window(guide)->GetState() == BatchWindow::Idle; };
    // Hundreds of files may take a while where other programs work too.
    bool isDone = false;
    for (int i = 0; i < Patience && !isDone; ++i)
        isDone = guide.GetRobot().WaitFor(isIdle);
    return guide.Check(isDone, "the window stays busy");
}

// A few years of pictures, with what a scan has to leave out.
void WriteTree(TourGuide& guide)
{
    const QImage images[] = {DrawLighthouse().image, DrawBalloon().image, DrawPortrait().image};
    QVector<QByteArray> pictures;
    for (const QImage& image : images)
    {
        QBuffer file;
        guide.Check(image.scaledToWidth(600, Qt::SmoothTransformation).save(&file, "JPEG"),
                    "no picture to try");
        pictures += file.data();
    }
    for (int i = 0; i < Years * Months * PicturesAMonth; ++i)
    {
        const QString month = QStringLiteral("%1/%2/%3")
                                  .arg(Root(guide))
                                  .arg(2010 + i / PicturesAMonth / Months)
                                  .arg(i / PicturesAMonth % Months + 1);
        QDir().mkpath(month);
        QFile file(QStringLiteral("%1/picture %2.jpg").arg(month).arg(i));
        guide.Check(file.open(QIODevice::WriteOnly) && file.write(pictures.at(i % pictures.size())) > 0,
                    "no file to try");
    }
    QFile notes(Root(guide) + QStringLiteral("/notes.txt"));
    QFile broken(Root(guide) + QStringLiteral("/no picture.png"));
    guide.Check(notes.open(QIODevice::WriteOnly) && broken.open(QIODevice::WriteOnly) &&
                    broken.write("This is not a picture.") > 0,
                "no file to try");
    guide.Check(QFile::link(Root(guide), Root(guide) + QStringLiteral("/back to the start")),
                "no link to try");
}

void OpenWindow(TourGuide& guide)
{
    WriteTree(guide);
    guide.OpenMenu(Qt::Key_F);
    guide.PressEntry(Qt::Key_B);
    const BatchWindow* window = Window(guide);
    guide.Check(window->isVisible(), "the window is not to be seen");
    guide.Check(guide.GetRobot().WaitFor([window] { return window->isActiveWindow(); }),
                "the window is not active");
}

// Leaves links out, if there is a question about some, and looks at the scan on its way. Its dialog gets a
// picture of that name, if there is one.
void WatchScan(TourGuide& guide, QWidget* dialog, const QString& picture)
{
    guide.TakePicture();
    if (!qobject_cast<KXAddToBatchDialog*>(dialog))
    {
        guide.GetRobot().WhenModal([&guide, picture](QWidget* next) { WatchScan(guide, next, picture); });
        guide.GetRobot().Key(Qt::Key_Return);
        return;
    }
    guide.ActAmidScan(dialog,
                      [dialog, &picture](TourGuide& it)
                      {
                          it.TakePicture();
                          if (!picture.isEmpty())
                              it.TakePictureOf(dialog, picture);
                      });
}

// Names the folder in the dialog, and sees its scan to the end.
void AddFolder(TourGuide& guide, const QString& folder, const QString& picture = QString())
{
    guide.GetRobot().WhenModal(
        [&guide, folder, picture](QWidget* dialog)
        {
            auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            if (guide.Check(name, "the dialog takes no name"))
                name->setText(folder);
            guide.GetRobot().WhenModal([&guide, picture](QWidget* next) { WatchScan(guide, next, picture); });
            guide.GetRobot().Key(Qt::Key_Return);
        });
    Press(guide, "Add Folder...");
    WaitForIdle(guide);
}

void ScanTree(TourGuide& guide)
{
    AddFolder(guide, Root(guide), QStringLiteral("batch-scan"));
    BatchWindow* window = Window(guide);
    const int images = Years * Months * PicturesAMonth + 1;
    guide.Check(window->GetModel()->GetFileCount() == images,
                QStringLiteral("the tree has %1 images").arg(window->GetModel()->GetFileCount()));
    guide.Check(window->GetPassedOver().size() == 2, "something else was left out");
    guide.Note(QStringLiteral("%1 images").arg(window->GetModel()->GetFileCount()));
}

void ShowTree(TourGuide& guide)
{
    BatchWindow* window = Window(guide);
    auto* tree = Control<BatchTreeView>(window);
    TourRobot& robot = guide.GetRobot();
    robot.Click(tree->viewport(), tree->visualRect(tree->model()->index(0, 0)).center());
    for (int key : {Qt::Key_Down, Qt::Key_Right, Qt::Key_Down, Qt::Key_Right})
        robot.Key(key);
    const auto isDrawn = [tree]
    {
        const QStringList files = tree->GetVisibleFiles();
        return !files.isEmpty() && !tree->GetThumbnails()->Get(files.constFirst()).isNull() &&
            tree->GetThumbnails()->GetPending() == 0;
    };
    guide.Check(robot.WaitFor(isDrawn), "there are no small pictures");
    guide.TakePicture();
    Control<QTabWidget>(window)->setCurrentIndex(1);
    robot.Settle();
    guide.TakePicture();
    Control<QTabWidget>(window)->setCurrentIndex(0);
}

void RunJob(TourGuide& guide)
{
    BatchWindow* window = Window(guide);
    guide.ChooseEntry(Control<QComboBox>(window, "m_pResize"), 1);
    guide.TypeInto(Control<NVSpinBox>(window, "m_pWidth"), 160);
    guide.TypeInto(Control<NVSpinBox>(window, "m_pHeight"), 160);
    guide.ChooseEntry(Control<QComboBox>(window, "m_pRotate"), 1);
    guide.ChooseEntry(Control<QComboBox>(window, "m_pFormat"), 1);
    const QString folder = guide.FileFor(QStringLiteral("Results"));
    Control<QLineEdit>(window, "m_pFolder")->setText(folder);
    Press(guide, "Start");
    const auto* bar = Control<QProgressBar>(window);
    guide.Check(guide.GetRobot().WaitFor([bar] { return bar->value() > bar->maximum() / 3; }),
                "the bar does not move");
    guide.TakePicture();
    if (!WaitForIdle(guide))
        return;
    const BatchReport& report = window->GetJob()->GetReport();
    const int images = Years * Months * PicturesAMonth;
    guide.Check(report.Count(BatchOutcome::Done) == images && report.Count(BatchOutcome::Failed) == 1,
                SummaryText(report));
    const QImage result(folder + QStringLiteral("/Photographs/2010/1/picture 0.png"));
    guide.Check(result.height() == 160 && result.width() < 160, "the result has another size");
    guide.Note(SummaryText(report));
}

// The filter shows a part of the tree, and a year is taken off.
void ChangeTree(TourGuide& guide)
{
    BatchWindow* window = Window(guide);
    auto* tree = Control<BatchTreeView>(window);
    auto* filter = Control<QLineEdit>(window, "m_pFilter");
    const auto* totals = Control<QLabel>(window, "m_pTotals");
    TourRobot& robot = guide.GetRobot();
    const int images = window->GetModel()->GetFileCount();
    robot.Click(filter);
    robot.Type(QStringLiteral("picture 3"));
    guide.Check(robot.WaitFor([totals] { return totals->text().contains(QLatin1String("shown")); }),
                "the filter does nothing");
    guide.TakePicture();
    filter->clear();
    guide.Check(robot.WaitFor([totals] { return !totals->text().contains(QLatin1String("shown")); }),
                "the filter stays");
    const QModelIndex year = tree->model()->index(0, 0, tree->model()->index(0, 0));
    tree->scrollTo(year);
    robot.Click(tree->viewport(), tree->visualRect(year).center());
    Press(guide, "Remove");
    guide.Check(window->GetModel()->GetFileCount() == images - Months * PicturesAMonth,
                "the year is still there");
    guide.TakePicture();
}

// Thousands of pictures that nobody has put there for the tour.
void ScanSystem(TourGuide& guide)
{
    BatchWindow* window = Window(guide);
    const int before = window->GetModel()->GetFileCount();
    AddFolder(guide, QStringLiteral("/usr/share"));
    const int found = window->GetModel()->GetFileCount() - before;
    guide.Check(found > 0, "no image was found");
    auto* tree = Control<BatchTreeView>(window);
    const QModelIndex last = tree->model()->index(tree->model()->rowCount() - 1, 0);
    tree->scrollTo(last, QAbstractItemView::PositionAtTop);
    guide.GetRobot().Click(tree->viewport(), tree->visualRect(last).center());
    guide.GetRobot().Key(Qt::Key_Right);
    guide.Note(QStringLiteral("%1 images").arg(found));
}

void CloseWindow(TourGuide& guide)
{
    BatchWindow* window = Window(guide);
    guide.Check(window->close(), "the window does not close");
    guide.GetWindow()->activateWindow();
    guide.Check(guide.GetRobot().WaitFor([&guide] { return guide.GetWindow()->isActiveWindow(); }),
                "the main window is not active");
}

} // namespace

void PlayBatch(TourGuide& guide)
{
    guide.Step("batch-window", "The batch window, opened by keys", OpenWindow);
    if (!guide.GetWindow()->GetBatchWindow())
        return;
    guide.Step("batch-scan", "A folder tree is scanned, without the link that leads back", ScanTree);
    guide.Step("batch-tree", "The tree, with small pictures of what is to be seen", ShowTree);
    guide.Step("batch-job", "All pictures made smaller, turned and converted", RunJob);
    guide.Step("batch-change", "The filter, and a year taken off the list", ChangeTree);
    guide.Step("batch-system", "A folder of the system, with all its images", ScanSystem);
    guide.Step("batch-close", "Back to the picture", CloseWindow);
}
