// Every widget of the library has as much room for its texts in each language as in English.

#include "CutText.h"
#include "Language.h"
#include "Specimens.h"
#include "TestMain.h"

namespace
{

// As it comes up in a window that is wide enough for it.
bool readRooms(const QByteArray& species, QVector<TextRoom>& rooms)
{
    const auto specimen = SpeciesOf(species).Create();
    specimen->Widget->resize(specimen->Widget->sizeHint().expandedTo(QSize(100, 20)));
    const bool isShown = specimen->Show();
    rooms = TextRooms(specimen->Widget);
    return isShown;
}

} // namespace

class tst_Translated : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textsHaveTheRoomThatTheyNeed_data();
    void textsHaveTheRoomThatTheyNeed();
};

void tst_Translated::textsHaveTheRoomThatTheyNeed_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QByteArray>("species");
    const QStringList languages = Language::GetNames();
    for (const QString& language : languages)
    {
        if (language == "en")
            continue;
        for (const Species& species : AllSpecies())
            QTest::addRow("%s %s", qPrintable(language), species.Name)
                << language << QByteArray(species.Name);
    }
}

void tst_Translated::textsHaveTheRoomThatTheyNeed()
{
    QFETCH(QString, language);
    QFETCH(QByteArray, species);
    QVector<TextRoom> english;
    QVERIFY(readRooms(species, english));
    const Language spoken({language});
    QVector<TextRoom> translated;
    QVERIFY(readRooms(species, translated));
    QCOMPARE(translated.size(), english.size());
    for (int i = 0; i < translated.size(); ++i)
    {
        const TextRoom& room = translated[i];
        // The buttons for bold and the like are made for one letter, whichever it is.
        if (room.Text.size() == 1)
            continue;
        // Some places are narrow for the English text too.
        const bool isWorse =
            room.MissingWidth > qMax(0, english[i].MissingWidth) || (room.IsTooLow && !english[i].IsTooLow);
        QVERIFY2(!isWorse,
                 qPrintable(QStringLiteral("%1: \"%2\" lacks %3 pixels")
                                .arg(room.Control, room.Text)
                                .arg(room.MissingWidth)));
    }
}

NV_TEST_MAIN(tst_Translated)
#include "tst_Translated.moc"
