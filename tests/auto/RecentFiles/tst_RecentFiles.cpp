// The list of recent files: order, doubles, length, and that it survives.

#include "RecentFiles.h"

#include <QDir>
#include <QSettings>
#include <QTemporaryDir>

#include "SignalLog.h"
#include "TestMain.h"

class tst_RecentFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_settings = std::make_unique<QSettings>(m_folder->filePath("s.ini"), QSettings::IniFormat);
    }

    void theNewestStandsFirstAndOnce()
    {
        RecentFiles recent(m_settings.get());
        SignalLog log(&recent);

        recent.Add("/a/one.png");
        recent.Add("/a/two.png");
        recent.Add("/a/b/../one.png");

        QCOMPARE(recent.Paths(), QStringList({"/a/one.png", "/a/two.png"}));
        QCOMPARE(log.Count("Changed"), 3);
    }

    void theFirstOneAgainTellsNothing()
    {
        RecentFiles recent(m_settings.get());
        recent.Add("/a/one.png");
        SignalLog log(&recent);

        recent.Add("/a/one.png");
        recent.Add(QString());
        recent.Remove("/not/there.png");

        QCOMPARE(log.Entries(), QStringList());
    }

    void aRelativePathIsMadeAbsolute()
    {
        RecentFiles recent(m_settings.get());

        recent.Add("one.png");

        QCOMPARE(recent.Paths(), QStringList(QDir::current().absoluteFilePath("one.png")));
    }

    void noMoreThanTenAreKept()
    {
        RecentFiles recent(m_settings.get());

        for (int i = 0; i < 15; ++i)
            recent.Add(QStringLiteral("/a/%1.png").arg(i));

        QCOMPARE(recent.Paths().size(), RecentFiles::MaxCount);
        QCOMPARE(recent.Paths().first(), QString("/a/14.png"));
    }

    void theListSurvives()
    {
        {
            RecentFiles recent(m_settings.get());
            recent.Add("/a/one & <b>two</b>, \"three\".png");
            recent.Add("/a/four.png");
            recent.Remove("/a/four.png");
        }

        RecentFiles again(m_settings.get());

        QCOMPARE(again.Paths(), QStringList("/a/one & <b>two</b>, \"three\".png"));
    }

    void whatOthersWroteIsCutToWhatMakesSense()
    {
        m_settings->setValue("files/recent", QStringList({"/a", "", "/a", "/b"}));

        const RecentFiles recent(m_settings.get());

        QCOMPARE(recent.Paths(), QStringList({"/a", "/b"}));
    }

    void clearEmptiesIt()
    {
        RecentFiles recent(m_settings.get());
        recent.Add("/a/one.png");
        SignalLog log(&recent);

        recent.Clear();
        recent.Clear();

        QCOMPARE(recent.Paths(), QStringList());
        QCOMPARE(log.Count("Changed"), 1);
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QSettings> m_settings;
};

NV_TEST_MAIN(tst_RecentFiles)
#include "tst_RecentFiles.moc"
