// Which image files the application knows.

#include "NVImageFileManager.h"
#include "SignalLog.h"
#include "TestMain.h"

#include <QImage>
#include <QImageReader>
#include <QImageWriter>

#include <memory>

class tst_NVImageFileManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thereIsNoneBeforeTheHostMakesOne();
    void instanceLivesAsLongAsTheManager();
    void secondManagerIsNeverTheInstance();
    void readFormatsAreThoseOfThePlugins();
    void writeFormatsAreThoseOfThePlugins();
    void formatsAreSortedBareAndLower();
    void groupAddsItsSuffixesAsGiven();
    void suffixOfAPluginIsThereOnce();
    void groupIsToldOnceAChange();
    void emptyGroupIsRemoved();
    void refreshWithTheSamePluginsIsSilent();
    void listenerMaySetAGroup();
};

void tst_NVImageFileManager::thereIsNoneBeforeTheHostMakesOne()
{
    QVERIFY(!NVImageFileManager::GetInstance());
}

void tst_NVImageFileManager::instanceLivesAsLongAsTheManager()
{
    for (int round = 0; round < 2; ++round)
    {
        QObject host;
        auto* manager = new NVImageFileManager(&host);
        QCOMPARE(NVImageFileManager::GetInstance(), manager);
        delete manager;
        QVERIFY(!NVImageFileManager::GetInstance());
    }
}

void tst_NVImageFileManager::secondManagerIsNeverTheInstance()
{
    auto first = std::make_unique<NVImageFileManager>();
    NVImageFileManager second;
    QCOMPARE(NVImageFileManager::GetInstance(), first.get());
    first.reset();
    QVERIFY(!NVImageFileManager::GetInstance());
    const NVImageFileManager third;
    QCOMPARE(NVImageFileManager::GetInstance(), &third);
}

void tst_NVImageFileManager::readFormatsAreThoseOfThePlugins()
{
    const NVImageFileManager manager;
    const QStringList formats = manager.GetSupportedReadFormats();
    const QList<QByteArray> plugins = QImageReader::supportedImageFormats();
    QVERIFY(formats.contains("png"));
    QCOMPARE(formats.size(), QSet<QByteArray>(plugins.begin(), plugins.end()).size());
    for (const QByteArray& plugin : plugins)
        QVERIFY(formats.contains(plugin));
}

void tst_NVImageFileManager::writeFormatsAreThoseOfThePlugins()
{
    const NVImageFileManager manager;
    const QStringList formats = manager.GetSupportedWriteFormats();
    QVERIFY(formats.contains("png"));
    for (const QByteArray& plugin : QImageWriter::supportedImageFormats())
        QVERIFY(formats.contains(plugin));
}

void tst_NVImageFileManager::formatsAreSortedBareAndLower()
{
    const NVImageFileManager manager;
    QStringList sorted = manager.GetSupportedReadFormats();
    std::sort(sorted.begin(), sorted.end());
    QCOMPARE(manager.GetSupportedReadFormats(), sorted);
    for (const QString& format : qAsConst(sorted))
    {
        QVERIFY(!format.contains('.') && !format.contains('*') && !format.isEmpty());
        QCOMPARE(format, format.toLower());
    }
}

void tst_NVImageFileManager::groupAddsItsSuffixesAsGiven()
{
    NVImageFileManager manager;
    const int count = manager.GetSupportedReadFormats().size();
    manager.SetGroup("Raw", {"RAWX", "rawy"});
    manager.SetGroup("Documents", {"own"});
    QCOMPARE(manager.GetGroups(), QStringList({"Documents", "Raw"}));
    QCOMPARE(manager.GetSupportedReadFormats().size(), count + 3);
    QVERIFY(manager.GetSupportedReadFormats().contains("RAWX"));
    QVERIFY(!manager.GetSupportedReadFormats().contains("rawx"));
    QVERIFY(!manager.GetSupportedWriteFormats().contains("own"));
}

void tst_NVImageFileManager::suffixOfAPluginIsThereOnce()
{
    NVImageFileManager manager;
    manager.SetGroup("Raw", {"png", "rawx", "rawx"});
    QCOMPARE(manager.GetSupportedReadFormats().count("png"), 1);
    QCOMPARE(manager.GetSupportedReadFormats().count("rawx"), 1);
}

void tst_NVImageFileManager::groupIsToldOnceAChange()
{
    NVImageFileManager manager;
    SignalLog log(&manager);
    manager.SetGroup("Raw", {"rawx"});
    QCOMPARE(log.Entries(), QStringList({"SupportedGroupsChanged()"}));
    manager.SetGroup("Raw", {"rawx"});
    manager.SetGroup("More", {"png"});
    QCOMPARE(log.Count(), 1);
    manager.SetGroup("Raw", {"rawy"});
    QCOMPARE(log.Count(), 2);
    QVERIFY(!manager.GetSupportedReadFormats().contains("rawx"));
}

void tst_NVImageFileManager::emptyGroupIsRemoved()
{
    NVImageFileManager manager;
    manager.SetGroup("Raw", {"rawx"});
    SignalLog log(&manager);
    manager.SetGroup("Raw", {});
    QCOMPARE(log.Count(), 1);
    QVERIFY(manager.GetGroups().isEmpty());
    QVERIFY(!manager.GetSupportedReadFormats().contains("rawx"));
    manager.SetGroup("Never there", {});
    QCOMPARE(log.Count(), 1);
}

void tst_NVImageFileManager::refreshWithTheSamePluginsIsSilent()
{
    NVImageFileManager manager;
    SignalLog log(&manager);
    manager.Refresh();
    QCOMPARE(log.Count(), 0);
}

void tst_NVImageFileManager::listenerMaySetAGroup()
{
    NVImageFileManager manager;
    connect(&manager, &NVImageFileManager::SupportedGroupsChanged, &manager,
            [&manager] { manager.SetGroup("More", {"rawy"}); });
    manager.SetGroup("Raw", {"rawx"});
    QVERIFY(manager.GetSupportedReadFormats().contains("rawx"));
    QVERIFY(manager.GetSupportedReadFormats().contains("rawy"));
}

NV_TEST_MAIN(tst_NVImageFileManager)

#include "tst_NVImageFileManager.moc"
