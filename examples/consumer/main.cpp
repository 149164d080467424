// The list of steps of another program's history, with the theme's sheets for its rows.
// With --quit the program ends as soon as the window has been shown.

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QTextStream>
#include <QTimer>

#include "NVHistoryPanel.h"

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);

    QMainWindow window;
    auto* steps = new NVHistoryPanel(&window);
    steps->EnableActions(true);
    for (const char* step : {"Open", "Brush stroke", "Crop"})
        steps->AddItem(QString::fromLatin1(step), QImage());
    steps->SetSelected(1);
    window.setCentralWidget(steps);
    QObject::connect(steps, &NVHistoryPanel::IndexActivated, steps, &NVHistoryPanel::SetSelected);
    window.show();

    if (QCoreApplication::arguments().contains(QStringLiteral("--quit")))
    {
        QTimer::singleShot(0, &application, &QCoreApplication::quit);
    }
    const int status = QApplication::exec();
    QTextStream(stdout) << "step " << steps->GetSelectedIndex() + 1 << " of " << steps->Count() << Qt::endl;
    return status;
}
