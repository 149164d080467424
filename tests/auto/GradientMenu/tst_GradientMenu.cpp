// The menu for gradient files: what comes in, what goes out, and the messages.

#include "GradientMenu.h"

#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>

#include "GradientHost.h"
#include "ModalDriver.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

struct Host : GradientHost
{
    explicit Host(QSettings* settings)
        : GradientHost(settings), gradients(&menu, tool.get(), settings, &window)
    {
    }

    QMenu menu;
    GradientMenu gradients;
};

QString TextOf(QWidget* box)
{
    QString text;
    for (const QLabel* label : box->findChildren<QLabel*>())
        text += label->text();
    return text;
}

} // namespace

class tst_GradientMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }
    void init() { m_scratch = std::make_unique<ScratchSettings>(); }

    void allOfTheFilesAreImported()
    {
        Host host(settings());
        SignalLog log(&host.gradients);
        const int count = host.tool->GetLibrary().GetGradients().size();
        const QString one = fileFor("one.svg", "<svg><linearGradient id='a'><stop/></linearGradient></svg>");
        const QString two = fileFor("two.ggr", "GIMP Gradient\nName: Two\n1\n0 0.5 1 1 0 0 1 0 0 1 1 0 0\n");

        host.gradients.Import({one, two});

        QCOMPARE(host.bar()->GetGradientCount(), count + 2);
        QCOMPARE(host.bar()->GetCurrentGradientIndex(), count);
        QCOMPARE(host.tool->GetLibrary().GetGradients().last().name, QString("Two"));
        QCOMPARE(log.Count("Message"), 1);
    }

    void aFileThatCannotBeReadIsNamedAndTheOthersAreTaken()
    {
        Host host(settings());
        const QString good = fileFor("good.svg", "<svg><linearGradient><stop/></linearGradient></svg>");
        const QString bad = fileFor("bad.ggr", "nothing of use");
        QString text;
        ModalDriver driver(
            [&text](QWidget* box)
            {
                text = TextOf(box);
                ModalDriver::PressKey(box, Qt::Key_Return);
            });

        host.gradients.Import({bad, good, m_scratch->folder.filePath("nowhere.svg")});

        QVERIFY(driver.Finished());
        QVERIFY(text.contains("bad.ggr") && text.contains("neither"));
        QVERIFY(text.contains("nowhere.svg"));
        QCOMPARE(host.tool->GetLibrary().GetGradients().last().name, QString("good"));
    }

    void manyErrorsFitOnTheScreen()
    {
        Host host(settings());
        QStringList paths;
        for (int i = 0; i < 200; ++i)
            paths += m_scratch->folder.filePath(QString("nowhere%1.svg").arg(i));
        QString text;
        ModalDriver driver(
            [&text](QWidget* box)
            {
                text = TextOf(box);
                ModalDriver::PressKey(box, Qt::Key_Escape);
            });

        host.gradients.Import(paths);

        QVERIFY(driver.Finished());
        QVERIFY(text.contains("nowhere9.svg") && !text.contains("nowhere10.svg"));
        QVERIFY(text.contains("190"));
    }

    void allAreExportedAsSvgAndTheCurrentOneAsGgr()
    {
        Host host(settings());
        host.bar()->Load(host.tool->GetLibrary().GetList());
        host.bar()->SetCurrentGradientIndex(5);
        QString error;

        QVERIFY(host.gradients.Export(m_scratch->folder.filePath("all.svg")));
        QVERIFY(host.gradients.Export(m_scratch->folder.filePath("one.ggr")));

        QCOMPARE(GradientFile::Read(m_scratch->folder.filePath("all.svg"), &error).size(), 24);
        const QVector<NamedGradient> one = GradientFile::Read(m_scratch->folder.filePath("one.ggr"), &error);
        QCOMPARE(one.size(), 1);
        QCOMPARE(one[0].name, host.tool->GetLibrary().GetGradients().at(5).name);
    }

    void anExportThatFailsIsTold()
    {
        Host host(settings());
        ModalDriver driver(
            [](QWidget* box)
            {
                QVERIFY(TextOf(box).contains("all.svg"));
                ModalDriver::PressKey(box, Qt::Key_Return);
            });

        QVERIFY(!host.gradients.Export(m_scratch->folder.filePath("nowhere/all.svg")));

        QVERIFY(driver.Finished());
    }

    void theEntriesAskForFiles()
    {
        Host host(settings());
        const QString path =
            fileFor("one.svg", "<svg><linearGradient id='One'><stop/></linearGradient></svg>");
        const auto choose = [&path](QWidget* dialog)
        {
            dialog->findChild<QLineEdit*>("fileNameEdit")->setText(path);
            QMetaObject::invokeMethod(dialog, "accept");
        };
        ModalDriver driver(choose);

        host.menu.actions().at(0)->trigger();

        QVERIFY(driver.Finished());
        QCOMPARE(host.tool->GetLibrary().GetGradients().last().name, QString("One"));
        const QString target = m_scratch->folder.filePath("out");
        ModalDriver saver(
            [&target](QWidget* dialog)
            {
                dialog->findChild<QLineEdit*>("fileNameEdit")->setText(target);
                QMetaObject::invokeMethod(dialog, "accept");
            });
        host.menu.actions().at(1)->trigger();
        QVERIFY(saver.Finished());
        QVERIFY(QFile::exists(target + ".svg"));
        QCOMPARE(settings()->value("gradient/folder").toString(), m_scratch->folder.path());
    }

    void dialogsThatAreLeftDoNothing()
    {
        Host host(settings());
        const auto leave = [](QWidget* dialog) { ModalDriver::PressKey(dialog, Qt::Key_Escape); };
        ModalDriver driver(QList<ModalDriver::Function>{leave, leave});

        host.menu.actions().at(0)->trigger();
        host.menu.actions().at(1)->trigger();

        QVERIFY(driver.Finished());
        QCOMPARE(host.tool->GetLibrary().GetGradients().size(), 24);
    }

private:
    QSettings* settings() const { return &m_scratch->settings; }
    QString fileFor(const QString& name, const QByteArray& text)
    {
        QFile file(m_scratch->folder.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("no place for files");
        return file.fileName();
    }

    std::unique_ptr<ScratchSettings> m_scratch;
};

NV_TEST_MAIN(tst_GradientMenu)
#include "tst_GradientMenu.moc"
