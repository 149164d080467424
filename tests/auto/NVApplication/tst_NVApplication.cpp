// The state that the whole application shares.

#include "NVApplication.h"
#include "SignalLog.h"
#include "TestMain.h"

#include <QAction>
#include <QDir>

#include <limits>
#include <memory>

class tst_NVApplication : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void thereIsOneInstance();
    void startsWithLightThemeBlackOnWhiteAndFirstPattern();
    void themeIsTakenOnce();
    void unknownThemeIsTakenAsLight_data();
    void unknownThemeIsTakenAsLight();
    void picturesHaveChangedWhenTheThemeIsTold();
    void foregroundIsTakenOnce();
    void backgroundIsTakenOnce();
    void invalidColorIsIgnored();
    void sameColorInAnotherModelIsNoChange();
    void transparencyIsPartOfTheColor();
    void patternIndexIsTakenOnce();
    void negativePatternIndexIsIgnored();
    void setterCalledFromTheSignalWins();
    void listenerMayDieAtAnyTime();
    void refineActionIsRegisteredOnce();
    void refineActionIsTakenBackByNull();
    void destroyedRefineActionIsForgotten();
    void replacedRefineActionMayDieUnnoticed();
    void refineActionRegisteredFromTheSignalWins();
};

void tst_NVApplication::cleanup()
{
    NVApplication* application = NVApplication::GetInstance();
    application->SetTheme(0);
    application->SetForeground(Qt::black);
    application->SetBackground(Qt::white);
    application->SetTexturePatternIndex(0);
    application->RegisterRefineSelection(nullptr);
}

void tst_NVApplication::thereIsOneInstance()
{
    QVERIFY(NVApplication::GetInstance() != nullptr);
    QCOMPARE(NVApplication::GetInstance(), NVApplication::GetInstance());
}

void tst_NVApplication::startsWithLightThemeBlackOnWhiteAndFirstPattern()
{
    QCOMPARE(NVApplication::GetInstance()->GetTheme(), 0);
    QCOMPARE(NVApplication::GetForeground(), QColor(Qt::black));
    QCOMPARE(NVApplication::GetBackground(), QColor(Qt::white));
    QCOMPARE(NVApplication::GetTexturePatternIndex(), 0);
    QCOMPARE(NVApplication::GetInstance()->GetRefineSelection(), nullptr);
}

void tst_NVApplication::themeIsTakenOnce()
{
    NVApplication* application = NVApplication::GetInstance();
    SignalLog log(application);

    application->SetTheme(0);
    application->SetTheme(1);
    application->SetTheme(1);
    application->SetTheme(2);

    QCOMPARE(log.Entries(), QStringList({"ThemeChanged(1)", "ThemeChanged(2)"}));
    QCOMPARE(application->GetTheme(), 2);
}

void tst_NVApplication::unknownThemeIsTakenAsLight_data()
{
    QTest::addColumn<int>("theme");
    QTest::newRow("negative") << -1;
    QTest::newRow("behind the last") << 3;
    QTest::newRow("smallest") << std::numeric_limits<int>::min();
    QTest::newRow("largest") << std::numeric_limits<int>::max();
}

void tst_NVApplication::unknownThemeIsTakenAsLight()
{
    QFETCH(int, theme);
    NVApplication* application = NVApplication::GetInstance();
    application->SetTheme(1);
    SignalLog log(application);

    application->SetTheme(theme);
    application->SetTheme(theme);

    QCOMPARE(application->GetTheme(), 0);
    QCOMPARE(log.Entries(), QStringList({"ThemeChanged(0)"}));
}

void tst_NVApplication::picturesHaveChangedWhenTheThemeIsTold()
{
    NVApplication* application = NVApplication::GetInstance();
    QStringList folders;
    int theme = -1;
    QObject listener;
    connect(application, &NVApplication::ThemeChanged, &listener,
            [&](int)
            {
                folders = QDir::searchPaths("theme");
                theme = application->GetTheme();
            });

    application->SetTheme(1);

    QCOMPARE(folders, QStringList(":/theme/dark"));
    QCOMPARE(theme, 1);
}

void tst_NVApplication::foregroundIsTakenOnce()
{
    NVApplication* application = NVApplication::GetInstance();
    SignalLog log(application);

    application->SetForeground(Qt::black);
    application->SetForeground(Qt::red);
    application->SetForeground(Qt::red);

    QCOMPARE(log.Entries(), QStringList({"ForegroundChanged(#ffff0000)"}));
    QCOMPARE(NVApplication::GetForeground(), QColor(Qt::red));
    QCOMPARE(NVApplication::GetBackground(), QColor(Qt::white));
}

void tst_NVApplication::backgroundIsTakenOnce()
{
    NVApplication* application = NVApplication::GetInstance();
    SignalLog log(application);

    application->SetBackground(Qt::white);
    application->SetBackground(Qt::blue);
    application->SetBackground(Qt::blue);

    QCOMPARE(log.Entries(), QStringList({"BackgroundChanged(#ff0000ff)"}));
    QCOMPARE(NVApplication::GetBackground(), QColor(Qt::blue));
    QCOMPARE(NVApplication::GetForeground(), QColor(Qt::black));
}

void tst_NVApplication::invalidColorIsIgnored()
{
    NVApplication* application = NVApplication::GetInstance();
    SignalLog log(application);

    application->SetForeground(QColor());
    application->SetBackground(QColor());

    QCOMPARE(log.Entries(), QStringList());
    QCOMPARE(NVApplication::GetForeground(), QColor(Qt::black));
    QCOMPARE(NVApplication::GetBackground(), QColor(Qt::white));
}

void tst_NVApplication::sameColorInAnotherModelIsNoChange()
{
    NVApplication* application = NVApplication::GetInstance();
    application->SetForeground(Qt::red);
    SignalLog log(application);

    application->SetForeground(QColor::fromHsv(0, 255, 255));
    application->SetBackground(QColor::fromCmyk(0, 0, 0, 0));

    QCOMPARE(log.Entries(), QStringList());
    QCOMPARE(NVApplication::GetForeground().spec(), QColor::Rgb);
}

void tst_NVApplication::transparencyIsPartOfTheColor()
{
    NVApplication* application = NVApplication::GetInstance();
    SignalLog log(application);

    application->SetForeground(QColor(0, 0, 0, 128));

    QCOMPARE(log.Entries(), QStringList({"ForegroundChanged(#80000000)"}));
    QCOMPARE(NVApplication::GetForeground().alpha(), 128);
}

void tst_NVApplication::patternIndexIsTakenOnce()
{
    NVApplication* application = NVApplication::GetInstance();
    SignalLog log(application);

    application->SetTexturePatternIndex(0);
    application->SetTexturePatternIndex(7);
    application->SetTexturePatternIndex(7);

    QCOMPARE(log.Entries(), QStringList({"TexturePatternIndexChanged(7)"}));
    QCOMPARE(NVApplication::GetTexturePatternIndex(), 7);
}

void tst_NVApplication::negativePatternIndexIsIgnored()
{
    NVApplication* application = NVApplication::GetInstance();
    application->SetTexturePatternIndex(3);
    SignalLog log(application);

    application->SetTexturePatternIndex(-1);
    application->SetTexturePatternIndex(std::numeric_limits<int>::min());

    QCOMPARE(log.Entries(), QStringList());
    QCOMPARE(NVApplication::GetTexturePatternIndex(), 3);
}

void tst_NVApplication::setterCalledFromTheSignalWins()
{
    NVApplication* application = NVApplication::GetInstance();
    QObject listener;
    connect(application, &NVApplication::ThemeChanged, &listener,
            [application](int theme)
            {
                if (theme == 1)
                    application->SetTheme(2);
            });

    application->SetTheme(1);

    QCOMPARE(application->GetTheme(), 2);
    QCOMPARE(QDir::searchPaths("theme"), QStringList(":/theme/contrast"));
}

void tst_NVApplication::listenerMayDieAtAnyTime()
{
    NVApplication* application = NVApplication::GetInstance();
    auto* first = new QObject;
    QObject second;
    int calls = 0;
    connect(application, &NVApplication::ForegroundChanged, first, [first] { delete first; });
    connect(application, &NVApplication::ForegroundChanged, &second, [&calls] { ++calls; });

    application->SetForeground(Qt::green);
    application->SetForeground(Qt::yellow);

    QCOMPARE(calls, 2);
}

void tst_NVApplication::refineActionIsRegisteredOnce()
{
    NVApplication* application = NVApplication::GetInstance();
    QAction action;
    SignalLog log(application);

    application->RegisterRefineSelection(nullptr);
    application->RegisterRefineSelection(&action);
    application->RegisterRefineSelection(&action);

    QCOMPARE(log.Entries(), QStringList({"RefineSelectionRegistered(object)"}));
    QCOMPARE(application->GetRefineSelection(), &action);
}

void tst_NVApplication::refineActionIsTakenBackByNull()
{
    NVApplication* application = NVApplication::GetInstance();
    auto action = std::make_unique<QAction>();
    application->RegisterRefineSelection(action.get());
    SignalLog log(application);

    application->RegisterRefineSelection(nullptr);
    action.reset();

    QCOMPARE(log.Entries(), QStringList({"RefineSelectionRegistered(null)"}));
    QCOMPARE(application->GetRefineSelection(), nullptr);
}

void tst_NVApplication::destroyedRefineActionIsForgotten()
{
    NVApplication* application = NVApplication::GetInstance();
    auto action = std::make_unique<QAction>();
    application->RegisterRefineSelection(action.get());
    SignalLog log(application);

    action.reset();

    QCOMPARE(log.Entries(), QStringList({"RefineSelectionRegistered(null)"}));
    QCOMPARE(application->GetRefineSelection(), nullptr);
}

void tst_NVApplication::replacedRefineActionMayDieUnnoticed()
{
    NVApplication* application = NVApplication::GetInstance();
    auto first = std::make_unique<QAction>();
    QAction second;
    application->RegisterRefineSelection(first.get());
    SignalLog log(application);

    application->RegisterRefineSelection(&second);
    first.reset();

    QCOMPARE(log.Entries(), QStringList({"RefineSelectionRegistered(object)"}));
    QCOMPARE(application->GetRefineSelection(), &second);
}

void tst_NVApplication::refineActionRegisteredFromTheSignalWins()
{
    NVApplication* application = NVApplication::GetInstance();
    QAction spare;
    auto action = std::make_unique<QAction>();
    application->RegisterRefineSelection(action.get());
    QObject listener;
    connect(application, &NVApplication::RefineSelectionRegistered, &listener,
            [&](QAction* registered)
            {
                if (!registered)
                    application->RegisterRefineSelection(&spare);
            });

    action.reset();

    QCOMPARE(application->GetRefineSelection(), &spare);
}

NV_TEST_MAIN(tst_NVApplication)

#include "tst_NVApplication.moc"
