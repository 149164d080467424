// The option bar of the ruler: its form, its read-outs and its two buttons.

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QtTest>

#include "BarForm.h"
#include "FormFacts.h"
#include "NVRulerToolbar.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

const char* const ReadOuts[] = {"m_pX1Pos", "m_pY1Pos", "m_pX2Pos", "m_pY2Pos", "m_pLength", "m_pAngle"};
using TextSetter = void (NVRulerToolbar::*)(const QString&);
const TextSetter Setters[] = {&NVRulerToolbar::SetX1, &NVRulerToolbar::SetY1,     &NVRulerToolbar::SetX2,
                              &NVRulerToolbar::SetY2, &NVRulerToolbar::SetLength, &NVRulerToolbar::SetAngle};

QList<FormFact> Facts()
{
    const QSize largest(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    QList<FormFact> facts = FactsOf(QString(), {{"objectName", "RulerToolBar"}, {"windowTitle", "Form"}});
    facts += PictureFacts("m_pPicture", "theme:ruler.png");
    for (const char* name : {"frame_4", "frame_3", "frame_6", "frame_7"})
        facts += SeparatorFacts(name);
    const char* const captions[][2] = {{"m_pDelimXYLbl0", "x1:"},    {"m_pDelimXYLbl1", "y1:"},
                                       {"m_pDelimXYLbl2", "x2:"},    {"m_pDelimXYLbl3", "y2:"},
                                       {"m_pDelimYLLbl", "Length:"}, {"m_pDelimLALbl", "Angle:"}};
    for (int i = 0; i < 6; ++i)
    {
        facts += CaptionFacts(captions[i][0], captions[i][1], ReadOuts[i]);
        facts += ReadOutFacts(ReadOuts[i], QSize(40, 0), largest);
    }
    facts.append({"m_pDelimYLLbl", "textFormat", int(Qt::PlainText)});
    facts += ButtonFacts("m_pStraighten", "Straighten", "Straighten and crop the image", QSize(80, 24));
    facts += ButtonFacts("m_pClear", "Clear", "Clear ruler points", QSize(80, 24));
    return facts;
}

} // namespace

class tst_NVRulerToolbar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formHasItsFacts_data() { AddFormFactRows(Facts()); }
    void formHasItsFacts();
    void rowStandsInItsLayout();
    void textsAreTranslatedUnderTheFormsName() { CheckFormTranslation<NVRulerToolbar>("RulerToolBar"); }
    void pictureIsThatOfTheScreensDensity();

    void signalsAreThese();
    void readOutTakesAnyText_data();
    void readOutTakesAnyText();
    void longTextMakesTheBarWider();
    void clickTellsOnlyWhileEnabled_data();
    void clickTellsOnlyWhileEnabled();
    void diesInItsOwnSignal();
};

void tst_NVRulerToolbar::formHasItsFacts()
{
    NVRulerToolbar bar(nullptr);
    CheckFormFact(&bar);
}

void tst_NVRulerToolbar::rowStandsInItsLayout()
{
    const NVRulerToolbar bar(nullptr);
    const auto* grid = qobject_cast<QGridLayout*>(bar.layout());
    QVERIFY(grid);
    QCOMPARE(grid->objectName(), QString("gridLayout"));
    QCOMPARE(grid->contentsMargins(), QMargins());
    QCOMPARE(grid->spacing(), 0);
    const auto* row = qobject_cast<QHBoxLayout*>(grid->itemAtPosition(0, 0)->layout());
    QVERIFY(row);

    QCOMPARE(row->objectName(), QString("horizontalLayout"));
    QCOMPARE(row->spacing(), 0);
    const QHBoxLayout untouched;
    QCOMPARE(row->contentsMargins(),
             QMargins(3, untouched.contentsMargins().top(), 0, untouched.contentsMargins().bottom()));
    QCOMPARE(RowOf(row).join(' '),
             QString("m_pPicture - frame_4 - m_pDelimXYLbl0 - m_pX1Pos - m_pDelimXYLbl1 - m_pY1Pos - frame_3 "
                     "- m_pDelimXYLbl2 - m_pX2Pos - m_pDelimXYLbl3 - m_pY2Pos - frame_6 - m_pDelimYLLbl - "
                     "m_pLength - m_pDelimLALbl - m_pAngle - frame_7 - m_pStraighten - m_pClear <>"));
}

void tst_NVRulerToolbar::pictureIsThatOfTheScreensDensity()
{
    if (!IsOnDenseScreen())
        return;
    const NVRulerToolbar bar(nullptr);
    const QPixmap picture = bar.findChild<QLabel*>("m_pPicture")->pixmap(Qt::ReturnByValue);
    QCOMPARE(picture.toImage(), QPixmap("theme:ruler@2x.png").toImage());
    QCOMPARE(picture.devicePixelRatioF(), 2.0);
}

void tst_NVRulerToolbar::signalsAreThese()
{
    NVRulerToolbar bar(nullptr);

    QCOMPARE(SignalLog(&bar).Watched(), QStringList({"Straighten", "Clear"}));
}

void tst_NVRulerToolbar::readOutTakesAnyText_data()
{
    QTest::addColumn<int>("readOut");
    QTest::addColumn<QString>("text");

    for (int i = 0; i < 6; ++i)
    {
        QTest::addRow("%s, number", ReadOuts[i]) << i << "1024.50";
        QTest::addRow("%s, negative", ReadOuts[i]) << i << "-12";
        QTest::addRow("%s, words", ReadOuts[i]) << i << QString("no number at all %1 <b>");
        QTest::addRow("%s, other scripts", ReadOuts[i]) << i << QString::fromUtf8("45° ٣٤");
        QTest::addRow("%s, nothing", ReadOuts[i]) << i << QString();
    }
}

void tst_NVRulerToolbar::readOutTakesAnyText()
{
    QFETCH(const int, readOut);
    QFETCH(const QString, text);
    NVRulerToolbar bar(nullptr);
    const SignalLog log(&bar);

    (bar.*Setters[readOut])("before");
    (bar.*Setters[readOut])(text);

    for (int i = 0; i < 6; ++i)
        QCOMPARE(bar.findChild<QLabel*>(ReadOuts[i])->text(), i == readOut ? text : QString());
    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVRulerToolbar::longTextMakesTheBarWider()
{
    NVRulerToolbar bar(nullptr);
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    const int width = bar.sizeHint().width();

    bar.SetLength("1");
    QCoreApplication::processEvents();
    QCOMPARE(bar.sizeHint().width(), width);
    bar.SetLength("123456789.00 px");

    QTRY_VERIFY(bar.sizeHint().width() > width);
}

void tst_NVRulerToolbar::clickTellsOnlyWhileEnabled_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QStringList>("told");

    QTest::newRow("straighten") << "m_pStraighten" << QStringList("Straighten()");
    QTest::newRow("clear") << "m_pClear" << QStringList("Clear()");
}

void tst_NVRulerToolbar::clickTellsOnlyWhileEnabled()
{
    QFETCH(const QString, button);
    NVRulerToolbar bar(nullptr);
    bar.show();
    QVERIFY(QTest::qWaitForWindowActive(&bar));
    const SignalLog log(&bar);
    auto* pressed = bar.findChild<QPushButton*>(button);
    const auto enable = [&](bool on)
    {
        if (button == "m_pStraighten")
            bar.SetStraightenEnabled(on);
        else
            bar.SetClearEnabled(on);
    };

    QTest::mouseClick(pressed, Qt::LeftButton);
    QCOMPARE(log.Entries(), QStringList());
    enable(true);
    enable(true);
    // The one alone.
    QCOMPARE(bar.findChild<QPushButton*>("m_pStraighten")->isEnabled(), button == "m_pStraighten");
    QCOMPARE(bar.findChild<QPushButton*>("m_pClear")->isEnabled(), button == "m_pClear");
    QTest::mouseClick(pressed, Qt::LeftButton);
    enable(false);
    QTest::mouseClick(pressed, Qt::LeftButton);

    QTEST(log.Entries(), "told");
}

void tst_NVRulerToolbar::diesInItsOwnSignal()
{
    QPointer<NVRulerToolbar> bar(new NVRulerToolbar(nullptr));
    bar->show();
    bar->SetStraightenEnabled(true);
    connect(bar, &NVRulerToolbar::Straighten, bar, &QObject::deleteLater);

    QTest::mouseClick(bar->findChild<QPushButton*>("m_pStraighten"), Qt::LeftButton);

    QTRY_VERIFY(!bar);
}

NV_TEST_MAIN(tst_NVRulerToolbar)
#include "tst_NVRulerToolbar.moc"
