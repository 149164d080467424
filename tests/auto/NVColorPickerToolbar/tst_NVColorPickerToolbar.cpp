// The option bar of the colour picker: its form, its lists and their signals, its read-outs and its swatch.

#include <QAbstractItemView>
#include <QLabel>
#include <QtTest>

#include "BarForm.h"
#include "FormFacts.h"
#include "KXCommonComboBox.h"
#include "NVColorPickerToolbar.h"
#include "ProbeImage.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

const char* const Captions[] = {"m_pDelimXYLbl0",  "m_pDelimXYLbl1",  "m_pDelimRGBLbl0",
                                "m_pDelimRGBLbl1", "m_pDelimRGBLbl2", "m_pDelimRGBLbl3"};
const char* const ReadOuts[] = {"m_pXPos", "m_pYPos", "m_pR", "m_pG", "m_pB", "m_pOpacity"};
using TextSetter = void (NVColorPickerToolbar::*)(const QString&);
const TextSetter Setters[] = {&NVColorPickerToolbar::SetX,    &NVColorPickerToolbar::SetY,
                              &NVColorPickerToolbar::SetRed,  &NVColorPickerToolbar::SetGreen,
                              &NVColorPickerToolbar::SetBlue, &NVColorPickerToolbar::SetOpacity};
const QStringList Sizes = {"Point sample", "3x3 average", "5x5 average", "7x7 average"};

// In the order of the grid, with its columns.
QList<FormFact> Facts()
{
    const QSize readOut(40, 24);
    const QSize largest(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    QList<FormFact> facts =
        FactsOf(QString(), {{"objectName", "ColorPickerToolBar"}, {"windowTitle", "Form"}});
    facts += PictureFacts("m_pPicture", "theme:picker.png");
    facts += CaptionFacts("label", "Sample size:", "m_pSampleSize");
    facts += ListFacts("m_pSampleSize", Sizes, 0, QSize(150, 24), 24);
    facts += CaptionFacts("label_2", "Sample:", "m_pSampleMode");
    facts += ListFacts("m_pSampleMode", {"Current Layer", "All layers"}, 1, QSize(140, 0), QWIDGETSIZE_MAX);
    facts += FactsOf("m_pPicturePosLbl",
                     {{"class", "QLabel"},
                      {"text", QString()},
                      {"minimumSize", QSize(0, 24)},
                      {"maximumSize", QSize(0, 24)}});
    facts += FactsOf("m_pPictureToolLbl",
                     {{"class", "QLabel"},
                      {"text", QString()},
                      {"picture", "theme:picker.png"},
                      {"scaledContents", true},
                      {"minimumSize", QSize(0, 24)},
                      {"maximumSize", QSize(0, 24)}});
    for (const char* name : {"frame_2", "frame_3", "frame_4", "frame_5"})
        facts += SeparatorFacts(name);
    const char* const texts[] = {"X:", "Y:", "R:", "G:", "B:", "Opacity:"};
    for (int i = 0; i < 6; ++i)
    {
        facts += CaptionFacts(Captions[i], texts[i], ReadOuts[i]);
        facts += ReadOutFacts(ReadOuts[i], readOut, readOut);
    }
    facts += FactsOf("m_pColor",
                     {{"class", "QLabel"},
                      {"text", QString()},
                      {"minimumSize", QSize(30, 24)},
                      {"maximumSize", QSize(30, 24)}});
    const QList<QPair<QString, int>> columns = {{"m_pPicture", 0},
                                                {"frame_2", 1},
                                                {"label", 4},
                                                {"m_pSampleSize", 5},
                                                {"label_2", 7},
                                                {"m_pSampleMode", 8},
                                                {"m_pPicturePosLbl", 9},
                                                {"frame_3", 11},
                                                {"m_pDelimXYLbl0", 13},
                                                {"m_pXPos", 14},
                                                {"m_pDelimXYLbl1", 16},
                                                {"m_pYPos", 17},
                                                {"m_pPictureToolLbl", 19},
                                                {"frame_4", 20},
                                                {"m_pDelimRGBLbl0", 22},
                                                {"m_pR", 23},
                                                {"m_pDelimRGBLbl1", 25},
                                                {"m_pG", 26},
                                                {"m_pDelimRGBLbl2", 28},
                                                {"m_pB", 29},
                                                {"m_pDelimRGBLbl3", 30},
                                                {"m_pOpacity", 31},
                                                {"m_pColor", 33},
                                                {"frame_5", 35}};
    for (const auto& column : columns)
        facts.append({column.first, "cell", QString("0 %1 1 1").arg(column.second)});
    return facts;
}

void ChooseBelow(QComboBox* list)
{
    list->showPopup();
    QTest::keyClick(list->view(), Qt::Key_Down);
    QTest::keyClick(list->view(), Qt::Key_Return);
}

} // namespace

class tst_NVColorPickerToolbar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formHasItsFacts_data() { AddFormFactRows(Facts()); }
    void formHasItsFacts();
    void rowStandsInAGridWithoutMargins();
    void textsAreTranslatedUnderTheFormsName()
    {
        CheckFormTranslation<NVColorPickerToolbar>("ColorPickerToolBar");
    }
    void pictureIsThatOfTheScreensDensity();

    void signalsAreThese();
    void startsAtAPointOfAllLayers();
    void labelsOfNoWidthShowNothing();
    void settingAListTellsOnce_data();
    void settingAListTellsOnce();
    void choosingFromAListTellsOnce_data();
    void choosingFromAListTellsOnce();
    void badIndexLeavesNothingSelected_data();
    void badIndexLeavesNothingSelected();
    void readOutTakesAnyText_data();
    void readOutTakesAnyText();
    void captionsHideAndTheRestStays();
    void hidingCaptionsTwiceIsTheSame();
    void colorFillsTheSwatch_data();
    void colorFillsTheSwatch();
    void colorBeforeTheFirstLayoutFillsTheLabelAsItIs();
    void swatchFillsItsLabelWhereItIsShown();
    void diesWithAnOpenList();
};

void tst_NVColorPickerToolbar::formHasItsFacts()
{
    NVColorPickerToolbar bar(nullptr);
    CheckFormFact(&bar);
}

void tst_NVColorPickerToolbar::rowStandsInAGridWithoutMargins()
{
    const NVColorPickerToolbar bar(nullptr);
    const auto* grid = qobject_cast<QGridLayout*>(bar.layout());

    QVERIFY(grid);
    QCOMPARE(grid->objectName(), QString("gridLayout"));
    QCOMPARE(grid->contentsMargins(), QMargins());
    QCOMPARE(grid->rowCount(), 1);
    QCOMPARE(RowOf(grid).join(' '),
             QString("m_pPicture frame_2 - label m_pSampleSize - label_2 m_pSampleMode m_pPicturePosLbl - "
                     "frame_3 - m_pDelimXYLbl0 m_pXPos - m_pDelimXYLbl1 m_pYPos - m_pPictureToolLbl frame_4 "
                     "- m_pDelimRGBLbl0 m_pR - m_pDelimRGBLbl1 m_pG - m_pDelimRGBLbl2 m_pB m_pDelimRGBLbl3 "
                     "m_pOpacity - m_pColor - frame_5 <>"));
}

void tst_NVColorPickerToolbar::pictureIsThatOfTheScreensDensity()
{
    if (!IsOnDenseScreen())
        return;
    const NVColorPickerToolbar bar(nullptr);
    const QPixmap picture = bar.findChild<QLabel*>("m_pPicture")->pixmap(Qt::ReturnByValue);
    QCOMPARE(picture.toImage(), QPixmap("theme:picker@2x.png").toImage());
    QCOMPARE(picture.devicePixelRatioF(), 2.0);
}

void tst_NVColorPickerToolbar::signalsAreThese()
{
    NVColorPickerToolbar bar(nullptr);

    QCOMPARE(SignalLog(&bar).Watched(), QStringList({"SizeChanged", "ModeChanged"}));
}

void tst_NVColorPickerToolbar::startsAtAPointOfAllLayers()
{
    const NVColorPickerToolbar bar(nullptr);

    QCOMPARE(bar.GetSize(), 0);
    QCOMPARE(bar.GetMode(), 1);
    QCOMPARE(bar.findChild<QComboBox*>("m_pSampleSize")->currentText(), QString("Point sample"));
    QCOMPARE(bar.findChild<QComboBox*>("m_pSampleMode")->currentText(), QString("All layers"));
}

void tst_NVColorPickerToolbar::labelsOfNoWidthShowNothing()
{
    NVColorPickerToolbar bar(nullptr);
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));

    for (const char* name : {"m_pPicturePosLbl", "m_pPictureToolLbl"})
    {
        const auto* label = bar.findChild<QLabel*>(name);
        QCOMPARE(label->width(), 0);
        QVERIFY(!label->isHidden());
    }
}

void tst_NVColorPickerToolbar::settingAListTellsOnce_data()
{
    QTest::addColumn<bool>("isSize");
    QTest::addColumn<int>("index");
    QTest::addColumn<QStringList>("told");

    for (int i = 1; i < 4; ++i)
        QTest::addRow("size %d", i) << true << i << QStringList(QString("SizeChanged(%1)").arg(i));
    QTest::newRow("size as it is") << true << 0 << QStringList();
    QTest::newRow("current layer") << false << 0 << QStringList("ModeChanged(0)");
    QTest::newRow("mode as it is") << false << 1 << QStringList();
}

void tst_NVColorPickerToolbar::settingAListTellsOnce()
{
    QFETCH(const bool, isSize);
    QFETCH(const int, index);
    NVColorPickerToolbar bar(nullptr);
    const SignalLog log(&bar);

    for (int i = 0; i < 2; ++i)
    {
        if (isSize)
            bar.SetSize(index);
        else
            bar.SetMode(index);
    }

    QCOMPARE(isSize ? bar.GetSize() : bar.GetMode(), index);
    QTEST(log.Entries(), "told");
}

void tst_NVColorPickerToolbar::choosingFromAListTellsOnce_data()
{
    QTest::addColumn<QString>("list");
    QTest::addColumn<QStringList>("told");

    QTest::newRow("size") << "m_pSampleSize" << QStringList("SizeChanged(1)");
    QTest::newRow("mode") << "m_pSampleMode" << QStringList("ModeChanged(1)");
}

void tst_NVColorPickerToolbar::choosingFromAListTellsOnce()
{
    QFETCH(const QString, list);
    NVColorPickerToolbar bar(nullptr);
    bar.SetMode(0);
    bar.show();
    QVERIFY(QTest::qWaitForWindowActive(&bar));
    const SignalLog log(&bar);

    ChooseBelow(bar.findChild<QComboBox*>(list));

    QTEST(log.Entries(), "told");
}

void tst_NVColorPickerToolbar::badIndexLeavesNothingSelected_data()
{
    QTest::addColumn<int>("index");

    QTest::newRow("behind the last") << 4;
    QTest::newRow("negative") << -7;
}

void tst_NVColorPickerToolbar::badIndexLeavesNothingSelected()
{
    QFETCH(const int, index);
    NVColorPickerToolbar bar(nullptr);
    const SignalLog log(&bar);

    bar.SetSize(index);
    bar.SetMode(index);
    bar.SetSize(index);

    QCOMPARE(bar.GetSize(), -1);
    QCOMPARE(bar.GetMode(), -1);
    QCOMPARE(log.Entries(), QStringList({"SizeChanged(-1)", "ModeChanged(-1)"}));
}

void tst_NVColorPickerToolbar::readOutTakesAnyText_data()
{
    QTest::addColumn<int>("readOut");
    QTest::addColumn<QString>("text");

    for (int i = 0; i < 6; ++i)
    {
        QTest::addRow("%s, number", ReadOuts[i]) << i << "255";
        QTest::addRow("%s, negative", ReadOuts[i]) << i << "-12.5";
        QTest::addRow("%s, words", ReadOuts[i]) << i << QString("no number at all, and far too long for it");
        QTest::addRow("%s, other scripts", ReadOuts[i]) << i << QString::fromUtf8("٣٤ %1 \n ☂");
        QTest::addRow("%s, nothing", ReadOuts[i]) << i << QString();
    }
}

void tst_NVColorPickerToolbar::readOutTakesAnyText()
{
    QFETCH(const int, readOut);
    QFETCH(const QString, text);
    NVColorPickerToolbar bar(nullptr);
    const SignalLog log(&bar);
    const int width = bar.sizeHint().width();

    (bar.*Setters[readOut])("before");
    (bar.*Setters[readOut])(text);

    for (int i = 0; i < 6; ++i)
        QCOMPARE(bar.findChild<QLabel*>(ReadOuts[i])->text(), i == readOut ? text : QString());
    QCOMPARE(bar.sizeHint().width(), width);
    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVColorPickerToolbar::captionsHideAndTheRestStays()
{
    NVColorPickerToolbar bar(nullptr);
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));

    for (const bool visible : {false, true})
    {
        bar.SetDelimsVisible(visible);
        for (const char* name : Captions)
            QCOMPARE(bar.findChild<QLabel*>(name)->isVisible(), visible);
        for (const char* name : ReadOuts)
            QVERIFY(bar.findChild<QLabel*>(name)->isVisible());
        for (const char* name : {"label", "label_2", "m_pColor", "m_pPicture", "m_pPicturePosLbl"})
            QVERIFY(bar.findChild<QLabel*>(name)->isVisible());
    }
}

void tst_NVColorPickerToolbar::hidingCaptionsTwiceIsTheSame()
{
    NVColorPickerToolbar bar(nullptr);

    bar.SetDelimsVisible(false);
    bar.SetDelimsVisible(false);
    bar.SetDelimsVisible(true);

    for (const char* name : Captions)
        QVERIFY(!bar.findChild<QLabel*>(name)->isHidden());
}

void tst_NVColorPickerToolbar::colorFillsTheSwatch_data()
{
    QTest::addColumn<QColor>("color");

    QTest::newRow("opaque") << QColor(200, 30, 7);
    QTest::newRow("half transparent") << QColor(0, 0, 255, 128);
    QTest::newRow("transparent") << QColor(Qt::transparent);
}

void tst_NVColorPickerToolbar::colorFillsTheSwatch()
{
    QFETCH(const QColor, color);
    NVColorPickerToolbar bar(nullptr);

    bar.SetColor(Qt::green);
    bar.SetColor(color);

    const QImage swatch = bar.findChild<QLabel*>("m_pColor")->pixmap(Qt::ReturnByValue).toImage();
    QCOMPARE(swatch.size(), QSize(30, 24));
    for (const QPoint& point : {QPoint(0, 0), QPoint(29, 0), QPoint(0, 23), QPoint(29, 23), QPoint(15, 12)})
        QVERIFY(ProbeImage::Similar(swatch.pixelColor(point), color, 1));
}

void tst_NVColorPickerToolbar::colorBeforeTheFirstLayoutFillsTheLabelAsItIs()
{
    NVColorPickerToolbar bar(nullptr);
    auto* label = bar.findChild<QLabel*>("m_pColor");
    label->setMaximumSize(90, 70);
    label->resize(77, 55);

    bar.SetColor(Qt::red);

    QCOMPARE(label->pixmap(Qt::ReturnByValue).size(), QSize(77, 55));
}

void tst_NVColorPickerToolbar::swatchFillsItsLabelWhereItIsShown()
{
    NVColorPickerToolbar bar(nullptr);
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));

    bar.SetColor(QColor(250, 0, 250));

    const ProbeImage probe(&bar);
    QCOMPARE(probe.BoundsOf(QColor(250, 0, 250), 0), bar.findChild<QLabel*>("m_pColor")->geometry());
}

void tst_NVColorPickerToolbar::diesWithAnOpenList()
{
    QWidget window;
    auto* bar = new NVColorPickerToolbar(&window);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    SignalLog log(bar);
    bar->findChild<QComboBox*>("m_pSampleSize")->showPopup();

    delete bar;

    QCOMPARE(log.Entries(), QStringList());
    QVERIFY(window.findChildren<QWidget*>().isEmpty());
}

NV_TEST_MAIN(tst_NVColorPickerToolbar)
#include "tst_NVColorPickerToolbar.moc"
