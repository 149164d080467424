// Random input for every exported widget class. NORVANE_MONKEY_EVENTS sets the number of events (500 unless
// set), NORVANE_MONKEY_SEED the seed (a fixed one unless set).

#include "Monkey.h"
#include "NVBrushToolbarWidget.h"
#include "Specimens.h"
#include "TestMain.h"

class tst_Monkey : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void everyWidgetBearsRandomInput_data();
    void everyWidgetBearsRandomInput();
};

void tst_Monkey::everyWidgetBearsRandomInput_data()
{
    AddSpeciesRows();
}

void tst_Monkey::everyWidgetBearsRandomInput()
{
    QFETCH(QByteArray, species);
    const int events = qEnvironmentVariableIsSet("NORVANE_MONKEY_EVENTS")
        ? qEnvironmentVariableIntValue("NORVANE_MONKEY_EVENTS")
        : 500;
    const int seed = qEnvironmentVariableIsSet("NORVANE_MONKEY_SEED")
        ? qEnvironmentVariableIntValue("NORVANE_MONKEY_SEED")
        : 20;
    const Species& kind = SpeciesOf(species);
    const std::unique_ptr<Specimen> specimen = kind.Create();
    QVERIFY(specimen->Show());
    if (auto* bar = qobject_cast<NVBrushToolbarWidget*>(specimen->Widget))
    {
        bar->CreateShortcuts();
    }
    qDebug("seed %d", seed);
    Monkey monkey(specimen->Widget, static_cast<quint32>(seed));
    for (const QByteArray& type : kind.NullAllowed)
    {
        monkey.AllowNull(type);
    }
    QCOMPARE(monkey.Run(events), events);
    QVERIFY(specimen->Widget);
}

NV_TEST_MAIN(tst_Monkey)

#include "tst_Monkey.moc"
