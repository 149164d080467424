// The print dialog: its form, lists and units, the settings to the byte, the preview and its zoom, and the
// way from "Print" to the closed dialog.

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFile>
#include <QGraphicsItem>
#include <QGraphicsView>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMutex>
#include <QPrintPreviewWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QThread>
#include <QThreadPool>
#include <QToolButton>
#include <QTranslator>
#include <QtTest>

#include <cmath>
#include <functional>

#include "BusyThreads.h"
#include "KXCommonComboBox.h"
#include "ModalDriver.h"
#include "NVPrintPreviewDialog.h"
#include "ProbeImage.h"
#include "RecordingPrinter.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "TransformationCenterPointControl.h"

using Dialog = NVPrintPreviewDialog;
using Place = TransformationCenterPointControl;

namespace
{

template <class T>
T* Find(const QObject* dialog, const char* name)
{
    T* control = dialog->findChild<T*>(name);
    if (!control)
        qFatal("no control %s", name);
    return control;
}

QDoubleSpinBox* Box(const QObject* dialog, const char* name)
{
    return Find<QDoubleSpinBox>(dialog, name);
}

QComboBox* List(const QObject* dialog, const char* name)
{
    return Find<QComboBox>(dialog, name);
}

QAbstractButton* Button(const QObject* dialog, const char* name)
{
    return Find<QAbstractButton>(dialog, name);
}

QPrintPreviewWidget* PreviewOf(const QObject* dialog)
{
    return dialog->findChild<QPrintPreviewWidget*>();
}

const QStringList MarginNames = {"m_pLeftMargin", "m_pRightMargin", "m_pTopMargin", "m_pBottomMargin"};
const QStringList LengthNames = QStringList(MarginNames) << "m_pXOffset"
                                                         << "m_pYOffset";
const QStringList AllLengthNames = QStringList({"m_pPageWidth", "m_pPageHeight"}) + LengthNames;

// Wide: red, green, blue and yellow quarters.
QImage Photo(int width = 600, int height = 400)
{
    QImage image(width, height, QImage::Format_RGB32);
    QPainter painter(&image);
    const int x = width / 2;
    const int y = height / 2;
    painter.fillRect(0, 0, x, y, Qt::red);
    painter.fillRect(x, 0, width - x, y, Qt::green);
    painter.fillRect(0, y, x, height - y, Qt::blue);
    painter.fillRect(x, y, width - x, height - y, Qt::yellow);
    return image;
}

// A dialog whose lists are those of a printer with three pages, a custom one and three resolutions.
struct Filled
{
    explicit Filled(QWidget* parent = nullptr) : dialog(parent)
    {
        for (const int resolution : {150, 300, 600})
            List(&dialog, "m_pDPI")->addItem(QString::number(resolution), resolution);
        QComboBox* pages = List(&dialog, "m_pPageSize");
        for (const QPageSize::PageSizeId id : {QPageSize::A4, QPageSize::Letter, QPageSize::A5})
            pages->addItem(QPageSize(id).name(), int(id));
        pages->addItem("Custom", int(QPageSize::Custom));
        List(&dialog, "m_pDPI")->setCurrentIndex(1);
        dialog.SetSource(Photo());
    }
    QDoubleSpinBox* Box(const char* name) const { return ::Box(&dialog, name); }
    QComboBox* List(const char* name) const { return ::List(&dialog, name); }
    static QComboBox* List(const QObject* object, const char* name) { return ::List(object, name); }
    QAbstractButton* Button(const char* name) const { return ::Button(&dialog, name); }
    Place* Alignment() const { return Find<Place>(&dialog, "m_pAlignment"); }
    QPrintPreviewWidget* Preview() const { return PreviewOf(&dialog); }
    void SetMargins(double left, double right, double top, double bottom) const
    {
        Box("m_pLeftMargin")->setValue(left);
        Box("m_pRightMargin")->setValue(right);
        Box("m_pTopMargin")->setValue(top);
        Box("m_pBottomMargin")->setValue(bottom);
    }
    // The printer of the preview, which it hands out with each request only.
    QPrinter* Device()
    {
        QPrinter* device = nullptr;
        const QMetaObject::Connection connection = QObject::connect(
            Preview(), &QPrintPreviewWidget::paintRequested, [&](QPrinter* p) { device = p; });
        Q_EMIT dialog.UpdatePreview();
        QObject::disconnect(connection);
        return device;
    }
    bool Show()
    {
        dialog.show();
        dialog.activateWindow();
        return QTest::qWaitForWindowActive(&dialog);
    }

    Dialog dialog;
};

// The requests for a new picture of the page.
struct PaintLog
{
    explicit PaintLog(const Dialog* dialog)
        : updates(dialog, &Dialog::UpdatePreview),
          requests(PreviewOf(dialog), &QPrintPreviewWidget::paintRequested)
    {
    }
    QSignalSpy updates;
    QSignalSpy requests;
};

// Bytes from a file of tests/data/printsettings: a field a line, as hexadecimal digits before its meaning.
QByteArray Settings(const QString& name)
{
    QFile file(QFINDTESTDATA("../../data/printsettings/" + name + ".hex"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no settings %s", qPrintable(name));
    QByteArray bytes;
    while (!file.atEnd())
    {
        const QByteArray line = file.readLine();
        if (!line.startsWith('#'))
            bytes += QByteArray::fromHex(line.left(line.indexOf(' ')));
    }
    return bytes;
}

// All that a person can set, but for printer, colour, copies and zoom.
QVariantMap StateOf(const Dialog& dialog)
{
    QVariantMap state;
    for (const QString& name : AllLengthNames + QStringList({"m_pCustomSX", "m_pCustomSY"}))
        state[name] = Box(&dialog, qPrintable(name))->value();
    for (const char* name : {"m_pPageSize", "m_pUnits", "m_pDPI", "m_pOrientation", "m_pRotate"})
        state[name] = List(&dialog, name)->currentIndex();
    for (const char* name :
         {"m_pKeepRatio", "m_pCustomKeepRatio", "m_pDontScale", "m_pFitToPage", "m_pCustom"})
        state[name] = Button(&dialog, name)->isChecked();
    state["m_pAlignment"] = Find<Place>(&dialog, "m_pAlignment")->GetState();
    return state;
}

// A point of the page, in pixels of the printer, as it stands in a picture of the preview.
class PagePicture
{
public:
    explicit PagePicture(const Dialog& dialog)
        : m_view(PreviewOf(&dialog)->findChild<QGraphicsView*>()), m_probe(m_view->viewport())
    {
        const QList<QGraphicsItem*> items = m_view->scene()->items();
        m_page = items.isEmpty() ? nullptr : items.first();
    }
    QColor At(double x, double y) const
    {
        const QPoint place = m_view->mapFromScene(m_page->mapToScene(QPointF(x, y)));
        return m_probe.At(place.x(), place.y());
    }

private:
    QGraphicsView* m_view;
    ProbeImage m_probe;
    QGraphicsItem* m_page;
};

// How often a widget draws itself.
struct PaintCounter : QObject
{
    explicit PaintCounter(QWidget* widget) { widget->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Paint;
        return false;
    }
    int count = 0;
};

double rounded(double value)
{
    return std::round(value * 100) / 100;
}

const double PerInch[] = {25.4, 72.0, 1.0, 6.0};

// What was handed to the thread that prints.
struct Printed
{
    PrintJob job;
    QThread* thread;
};
QMutex PrintedMutex;
QList<Printed> PrintedJobs;

QList<Printed> TakePrinted()
{
    const QMutexLocker lock(&PrintedMutex);
    QList<Printed> jobs;
    jobs.swap(PrintedJobs);
    return jobs;
}

using Act = std::function<void(Filled&)>;

} // namespace

// Stands in for the library's function of this name: the loader finds the one of the program first. No job
// leaves from here, and each can be looked at.
void Print(const PrintJob& job)
{
    const QMutexLocker lock(&PrintedMutex);
    PrintedJobs << Printed{job, QThread::currentThread()};
}

Q_DECLARE_METATYPE(Act)

class tst_NVPrintPreviewDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();

    void interfaceIsAsHostsKnowIt();
    void formHasItsControls_data();
    void formHasItsControls();
    void boxHasItsRange_data();
    void boxHasItsRange();
    void listHasItsTexts_data();
    void listHasItsTexts();
    void textsAreTranslated();
    void formEnablesWhatBelongsToAMode();
    void labelsNameTheirControls();
    void controlsAreReachedInOrder();
    void formFitsIntoTheDialog();
    void previewStandsAloneInItsArea();
    void newDialogIsReady();
    void printersAreCounted();

    void emptyListsGiveNoResolution();
    void printerWithoutListsEmptiesThem();
    void resolutionFollowsItsRow();
    void orientationFollowsItsRow();
    void colorIsThatOfThePrinter();
    void fixedPageShowsItsSize_data();
    void fixedPageShowsItsSize();
    void customPageCanBeTyped_data();
    void customPageCanBeTyped();
    void customPageIsStoredInTheUnitOfTheMoment();
    void customPageIsRememberedBehindAFixedOne();
    void devicePageIsThatOfTheRow();
    void unitsShowEverywhere_data();
    void unitsShowEverywhere();
    void unitsPassThroughThePageOfTheSameNumber();
    void unitsConvertEachLength_data();
    void unitsConvertEachLength();
    void unitsAndBackKeepTheLengths();
    void noUnitCountsAsMillimetres();

    void geometryIsThatOfTheForm();
    void pageClipIsTrimmedToTheSheet();
    void noRoomGivesAnEmptyClip();
    void resolutionChangesThePrintedSize();
    void scaleModesGiveTheirScale();
    void angleIsTheRow();

    void changePaintsOnce_data();
    void changePaintsOnce();
    void previewDrawsThePictureOnce();
    void previewDrawsMarginsGrey();
    void previewWithoutRoomIsGrey();
    void previewShowsPictureAndMargins();
    void previewCutsALargePictureOnAllSides();
    void previewTurnsAWidePicture();
    void previewOfNegativeMarginsEndsAtTheSheet();
    void previewKeepsADrawingOfATurnedPictureAlone_data();
    void previewKeepsADrawingOfATurnedPictureAlone();
    void previewFillsWhatIsBesideTheSheet();
    void ratioKeepsBothScalesTogether();
    void ratioTurnedOnTakesTheWidth();

    void zoomSliderAndBoxFollowEachOther_data();
    void zoomSliderAndBoxFollowEachOther();
    void zoomBoxMovesTheSlider();
    void zoomFactorIsThatOfTheBox();
    void zoomButtonsGoAStep();
    void actualSizeUpdatesTwice();
    void fitOnScreenFits();
    void fitInViewIsThereForTheHost();
    void previewTellsItsZoom();
    void previewTellsItsExactZoomToTheSlider();
    void previewThatKeepsItsZoomDrawsNoBox();

    void settingsAreTheirBytes_data();
    void settingsAreTheirBytes();
    void settingsComeBack_data();
    void settingsComeBack();
    void onlyModeZeroChoosesItsButton();
    void customSizeIsTakenInTheOldUnit();
    void settingsOfAnUnknownPageAreSkipped();
    void nothingToRestoreChangesNothing_data();
    void nothingToRestoreChangesNothing();
    void trailingBytesAreIgnored();
    void bytesCutAnywhereReadAsZeros_data();
    void bytesCutAnywhereReadAsZeros();
    void hostileSettingsAreBounded_data();
    void hostileSettingsAreBounded();
    void disabledFlagsAreRestoredWithoutAPicture();
    void whatIsNotSavedStays();

    void printClosesAsAccepted();
    void printWithoutRoomClosesAsAccepted();
    void printDisablesTheDialogUntilItIsDone();
    void printTakesAllFromTheForm();
    void printTakesThePageFromItsRow();
    void printTakesALandscapeOfAnyOtherRow();
    void printWorksOnACopy();
    void closeRejects();
    void deletedWithAValueUntold();
    void deletedWhileItPrints();
    void deletedAfterItsJob();
    void twoDialogsPrintInARow();
};

// No test may reach a printer of the machine that it runs on.
void tst_NVPrintPreviewDialog::initTestCase()
{
    qputenv("CUPS_SERVER", "/nonexistent/cups.sock");
    qRegisterMetaType<QPrinter*>("QPrinter*");
}

void tst_NVPrintPreviewDialog::cleanup()
{
    QVERIFY(!QGuiApplication::overrideCursor());
    TakePrinted();
}

void tst_NVPrintPreviewDialog::interfaceIsAsHostsKnowIt()
{
    const QMetaObject& meta = Dialog::staticMetaObject;
    QVERIFY(meta.indexOfSignal("UpdatePreview()") >= 0);
    const QStringList slotNames = {"OnPrinter(QString)",   "OnPage(int)",
                                   "OnUnits(int)",         "OnDPI(int)",
                                   "OnOrientation(int)",   "OnPageWidth(double)",
                                   "OnPageHeight(double)", "OnMargin(double)",
                                   "OnColor(bool)",        "OnPaintRequest(QPrinter*)",
                                   "OnPreview()",          "OnAlignment(int)",
                                   "OnRotate(int)",        "OnOffset(double)",
                                   "OnDontScale(bool)",    "OnFitToPage(bool)",
                                   "OnCustomScale(bool)",  "OnKeepRatio(bool)",
                                   "OnKeepScale(bool)",    "OnScaleX(double)",
                                   "OnScaleY(double)",     "OnZoomIn()",
                                   "OnZoomOut()",          "OnViewportScale(double)",
                                   "OnViewportScale(int)", "OnActualSize()",
                                   "OnFitInView()",        "OnPrint()",
                                   "OnPrintFinished()"};
    for (const QString& name : slotNames)
    {
        const int index = meta.indexOfSlot(qPrintable(name));
        QVERIFY2(index >= 0, qPrintable(name));
        QCOMPARE(meta.method(index).access(), QMetaMethod::Private);
    }
    QCOMPARE(meta.methodCount() - meta.methodOffset(), slotNames.size() + 1);
}

void tst_NVPrintPreviewDialog::formHasItsControls_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("className");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("checked");
    const auto row = [](const char* name, const char* className, const char* text = "", bool enabled = true,
                        bool checked = false)
    { QTest::newRow(name) << QString(name) << QString(className) << QString(text) << enabled << checked; };
    row("m_pPreviewArea", "QWidget");
    row("m_pPrinter", "KXCommonComboBox");
    row("m_pColor", "QCheckBox", "Color", true, true);
    row("groupBox", "QGroupBox", "Page");
    row("m_pPageSize", "KXCommonComboBox");
    row("m_pUnits", "KXCommonComboBox");
    row("m_pDPI", "KXCommonComboBox");
    row("m_pOrientation", "KXCommonComboBox");
    row("groupBox_2", "QGroupBox", "Scale");
    row("m_pKeepRatio", "QCheckBox", "Keep ratio", false, true);
    row("m_pDontScale", "QRadioButton", "Don't scale", true, true);
    row("m_pCustom", "QRadioButton", "Custom");
    row("m_pFitToPage", "QRadioButton", "Fit to page");
    row("m_pCustomKeepRatio", "QCheckBox", "Keep ratio", false, true);
    row("groupBox_3", "QGroupBox", "Position");
    row("m_pAlignment", "TransformationCenterPointControl");
    row("m_pRotate", "KXCommonComboBox");
    row("m_pZoomOut", "QToolButton");
    row("m_pZoomIn", "QToolButton");
    row("m_pViewportScaleSlider", "QSlider");
    row("m_pFitInView", "QPushButton", "Fit on screen");
    row("m_pActualSize", "QPushButton", "Actual size");
    row("m_pButtonBox", "QDialogButtonBox");
}

void tst_NVPrintPreviewDialog::formHasItsControls()
{
    QFETCH(QString, name);
    QFETCH(QString, className);
    QFETCH(QString, text);
    QFETCH(bool, enabled);
    QFETCH(bool, checked);
    const Dialog dialog(nullptr);
    const auto* control = Find<QWidget>(&dialog, qPrintable(name));
    QCOMPARE(QString(control->metaObject()->className()), className);
    const char* property = className == "QGroupBox" ? "title" : "text";
    if (className != "QToolButton")
        QCOMPARE(control->property(property).toString(), text);
    QCOMPARE(control->isEnabled(), enabled);
    QCOMPARE(control->property("checked").toBool(), checked);
    if (className == "QToolButton")
        QVERIFY(!static_cast<const QToolButton*>(control)->icon().isNull());
}

void tst_NVPrintPreviewDialog::boxHasItsRange_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<double>("least");
    QTest::addColumn<double>("most");
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<int>("width");
    const auto row =
        [](const QString& name, double least, double most, double value, const char* suffix, int width)
    { QTest::newRow(qPrintable(name)) << name << least << most << value << QString(suffix) << width; };
    // Without a printer the page is A4.
    row("m_pPageWidth", 0, 210, 210, " mm", 100);
    row("m_pPageHeight", 0, 297, 297, " mm", 100);
    for (const QString& name : MarginNames)
        row(name, -1000, 1000, 0, " mm", 0);
    row("m_pCustomSX", 0.01, 10000, 100, "%", 0);
    row("m_pCustomSY", 0.01, 10000, 100, "%", 0);
    row("m_pXOffset", -1000, 1000, 0, " mm", 80);
    row("m_pYOffset", -1000, 1000, 0, " mm", 80);
    row("m_pViewportScale", 0.01, 500, 0.01, "%", 0);
}

void tst_NVPrintPreviewDialog::boxHasItsRange()
{
    QFETCH(QString, name);
    QFETCH(double, least);
    QFETCH(double, most);
    QFETCH(double, value);
    QFETCH(QString, suffix);
    QFETCH(int, width);
    const Dialog dialog(nullptr);
    const QDoubleSpinBox* box = Box(&dialog, qPrintable(name));
    QCOMPARE(box->minimum(), least);
    QCOMPARE(box->maximum(), most);
    QCOMPARE(box->value(), value);
    QCOMPARE(box->suffix(), suffix);
    QCOMPARE(box->decimals(), 2);
    QCOMPARE(box->minimumWidth(), width);
    QCOMPARE(box->buttonSymbols(), QAbstractSpinBox::NoButtons);
    const auto* copies = Find<QSpinBox>(&dialog, "m_pCopiesNumber");
    QCOMPARE(copies->minimum(), 1);
    QCOMPARE(copies->maximum(), 255);
    QCOMPARE(copies->value(), 1);
    QCOMPARE(copies->buttonSymbols(), QAbstractSpinBox::NoButtons);
}

void tst_NVPrintPreviewDialog::listHasItsTexts_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<int>("width");
    QTest::newRow("units") << "m_pUnits" << QStringList({"mm", "point", "in", "pica"}) << 70;
    QTest::newRow("orientation") << "m_pOrientation" << QStringList({"Portrait", "Landscape"}) << 0;
    QTest::newRow("rotate") << "m_pRotate"
                            << QStringList({"None", "Auto", QString::fromUtf8("90 \u00b0 CW"),
                                            QString::fromUtf8("90 \u00b0 CCW"),
                                            QString::fromUtf8("180 \u00b0")})
                            << 90;
    QTest::newRow("printer") << "m_pPrinter" << QStringList() << 0;
    QTest::newRow("page") << "m_pPageSize" << QStringList() << 0;
    QTest::newRow("resolution") << "m_pDPI" << QStringList() << 0;
}

void tst_NVPrintPreviewDialog::listHasItsTexts()
{
    QFETCH(QString, name);
    QFETCH(QStringList, texts);
    QFETCH(int, width);
    const Dialog dialog(nullptr);
    const QComboBox* list = List(&dialog, qPrintable(name));
    QCOMPARE(list->count(), texts.size());
    for (int row = 0; row < list->count(); ++row)
        QCOMPARE(list->itemText(row), texts.at(row));
    QCOMPARE(list->currentIndex(), texts.isEmpty() ? -1 : 0);
    QCOMPARE(list->minimumWidth(), width);
}

void tst_NVPrintPreviewDialog::textsAreTranslated()
{
    class Marker : public QTranslator
    {
    public:
        bool isEmpty() const override { return false; }
        QString translate(const char* context, const char* text, const char*, int) const override
        {
            const QByteArray name(context);
            return name == "PrintPreview" || name == "NVPrintPreviewDialog" ? name.left(2) + "|" + text
                                                                            : QString();
        }
    };
    Marker marker;
    QCoreApplication::installTranslator(&marker);
    const Dialog dialog(nullptr);
    QCOMPARE(Button(&dialog, "m_pColor")->text(), QString("Pr|Color"));
    QCOMPARE(List(&dialog, "m_pUnits")->itemText(3), QString("Pr|pica"));
    QCOMPARE(Box(&dialog, "m_pXOffset")->suffix(), QString(" Pr|mm"));
    QCOMPARE(Find<QDialogButtonBox>(&dialog, "m_pButtonBox")->button(QDialogButtonBox::Ok)->text(),
             QString("NV|Print"));
    QCoreApplication::removeTranslator(&marker);
}

void tst_NVPrintPreviewDialog::formEnablesWhatBelongsToAMode()
{
    Dialog dialog(nullptr);
    const QStringList custom = {"m_pCustomSX", "m_pCustomSY", "m_pCustomKeepRatio", "m_pCustomSXLbl",
                                "m_pCustomSYLbl"};
    const auto enabled = [&](const QString& name)
    { return Find<QWidget>(&dialog, qPrintable(name))->isEnabled(); };
    const auto check = [&](bool fit, bool own)
    {
        QCOMPARE(enabled("m_pKeepRatio"), fit);
        for (const QString& name : custom)
            QVERIFY2(enabled(name) == own, qPrintable(name));
    };
    check(false, false);
    Button(&dialog, "m_pFitToPage")->click();
    check(true, false);
    Button(&dialog, "m_pCustom")->click();
    check(false, true);
    Button(&dialog, "m_pDontScale")->click();
    check(false, false);
}

void tst_NVPrintPreviewDialog::labelsNameTheirControls()
{
    const Dialog dialog(nullptr);
    const QList<QPair<const char*, const char*>> buddies = {
        {"m_pPrinterLbl", "Printer:"},   {"m_pPageSizeLbl", "Size:"},   {"m_pPageWidthLbl", "Width:"},
        {"m_pPageHeightLbl", "Height:"}, {"m_pDPILbl", "DPI:"},         {"m_pOrientationLbl", "Orientation:"},
        {"m_pCustomSXLbl", "Width:"},    {"m_pCustomSYLbl", "Height:"}, {"m_pXOffsetLbl", "X:"},
        {"m_pYOffsetLbl", "Y:"},         {"m_pRotateLbl", "Rotate:"},   {"m_pCopiesNumberLbl", "Copies:"}};
    for (const auto& entry : buddies)
    {
        const auto* label = Find<QLabel>(&dialog, entry.first);
        QCOMPARE(label->text(), QString(entry.second));
        QVERIFY(label->buddy());
        QCOMPARE(label->buddy()->objectName() + "Lbl", label->objectName());
    }
    QCOMPARE(Find<QLabel>(&dialog, "m_pMarginsLbl")->text(), QString("Margins:"));
    QCOMPARE(Find<QLabel>(&dialog, "m_pOffsetLbl")->text(), QString("Offset:"));
    QCOMPARE(Find<QLabel>(&dialog, "m_pZoomOutLbl")->text(), QString("Scale:"));
}

// Tab goes from the printer down to the copies, then below the preview.
void tst_NVPrintPreviewDialog::controlsAreReachedInOrder()
{
    Filled filled;
    QVERIFY(filled.Show());
    // Of the three modes, Tab reaches the one that was chosen.
    filled.Button("m_pCustom")->setFocus();
    QTest::keyClick(filled.Button("m_pCustom"), Qt::Key_Space);
    filled.List("m_pPrinter")->setFocus();
    QStringList names;
    for (int i = 0; i < 60 && (i == 0 || QApplication::focusWidget()->objectName() != "m_pPrinter"); ++i)
    {
        names << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    const QStringList expected = {"m_pPrinter",
                                  "m_pColor",
                                  "m_pPageSize",
                                  "m_pPageWidth",
                                  "m_pPageHeight",
                                  "m_pUnits",
                                  "m_pDPI",
                                  "m_pOrientation",
                                  "m_pTopMargin",
                                  "m_pLeftMargin",
                                  "m_pRightMargin",
                                  "m_pBottomMargin",
                                  "m_pCustom",
                                  "m_pCustomKeepRatio",
                                  "m_pCustomSX",
                                  "m_pCustomSY",
                                  "m_pAlignment",
                                  "m_pXOffset",
                                  "m_pYOffset",
                                  "m_pRotate",
                                  "m_pCopiesNumber",
                                  "m_pZoomOut",
                                  "m_pViewportScaleSlider",
                                  "m_pZoomIn",
                                  "m_pViewportScale",
                                  "m_pFitInView",
                                  "m_pActualSize"};
    QVERIFY2(names.mid(0, expected.size()) == expected, qPrintable(names.join(" ")));
}

void tst_NVPrintPreviewDialog::formFitsIntoTheDialog()
{
    Filled filled;
    QCOMPARE(filled.dialog.windowTitle(), QString("Form"));
    QVERIFY(filled.Show());
    QVERIFY(filled.dialog.width() >= 1071 && filled.dialog.height() >= 572);
    QCOMPARE(Find<QWidget>(&filled.dialog, "m_pPreviewArea")->minimumSize(), QSize(640, 480));
    QCOMPARE(filled.Alignment()->size(), QSize(40, 40));
    // Left, right beside each other, top above, bottom below.
    const QRect top = filled.Box("m_pTopMargin")->geometry();
    const QRect left = filled.Box("m_pLeftMargin")->geometry();
    const QRect right = filled.Box("m_pRightMargin")->geometry();
    const QRect bottom = filled.Box("m_pBottomMargin")->geometry();
    QCOMPARE(left.top(), right.top());
    QVERIFY(top.bottom() < left.top() && left.bottom() < bottom.top() && left.right() < right.left());
    QVERIFY(qAbs(2 * top.center().x() - left.center().x() - right.center().x()) <= 2);
    QCOMPARE(bottom.center().x(), top.center().x());
}

void tst_NVPrintPreviewDialog::previewStandsAloneInItsArea()
{
    const Dialog dialog(nullptr);
    const auto* grid = qobject_cast<QGridLayout*>(Find<QWidget>(&dialog, "m_pPreviewArea")->layout());
    QVERIFY(grid);
    QCOMPARE(grid->count(), 1);
    QCOMPARE(grid->contentsMargins(), QMargins());
    QCOMPARE(grid->spacing(), 0);
    const auto* preview = qobject_cast<QPrintPreviewWidget*>(grid->itemAtPosition(0, 0)->widget());
    QVERIFY(preview);
    QCOMPARE(preview->zoomMode(), QPrintPreviewWidget::FitInView);
}

void tst_NVPrintPreviewDialog::newDialogIsReady()
{
    Filled filled;
    QCOMPARE(filled.Alignment()->GetState(), Place::Center);
    QVERIFY(filled.Device()->fullPage());
    const auto* box = Find<QDialogButtonBox>(&filled.dialog, "m_pButtonBox");
    QCOMPARE(box->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Close);
    QCOMPARE(box->button(QDialogButtonBox::Ok)->text(), QString("Print"));
    QVERIFY(filled.dialog.isEnabled());
}

void tst_NVPrintPreviewDialog::printersAreCounted()
{
    QCOMPARE(Dialog::GetPrintersCount(), 0);
    const Dialog dialog(nullptr);
    QCOMPARE(List(&dialog, "m_pPrinter")->count(), 0);
}

// Row 0 is taken though there is none, and has no number.
void tst_NVPrintPreviewDialog::emptyListsGiveNoResolution()
{
    Dialog dialog(nullptr);
    QPrinter* device = nullptr;
    connect(PreviewOf(&dialog), &QPrintPreviewWidget::paintRequested, this, [&](QPrinter* p) { device = p; });
    dialog.SetSource(Photo());
    QVERIFY(device);
    QCOMPARE(device->resolution(), 0);
    QCOMPARE(device->pageLayout().pageSize().id(), QPageSize::A4);
    QVERIFY(dialog.GetClipRect().width() <= 0);
}

// The page falls back to A4, whose number an empty list stands for.
void tst_NVPrintPreviewDialog::printerWithoutListsEmptiesThem()
{
    Filled filled;
    filled.List("m_pPageSize")->setCurrentIndex(2);
    filled.SetMargins(1, 2, 3, 4);
    filled.List("m_pPrinter")->addItem("No such printer");
    QCOMPARE(filled.List("m_pDPI")->count(), 0);
    QCOMPARE(filled.List("m_pPageSize")->count(), 0);
    QPrinter* device = filled.Device();
    QCOMPARE(device->resolution(), 0);
    QCOMPARE(device->pageLayout().pageSize().id(), QPageSize::A4);
    QCOMPARE(filled.Box("m_pPageWidth")->value(), 210.0);
    QCOMPARE(filled.Box("m_pRightMargin")->value(), 2.0);
    // The lists answer again.
    filled.List("m_pDPI")->addItem("200", 200);
    QCOMPARE(filled.Device()->resolution(), 200);
    filled.List("m_pPageSize")->addItem("A5", int(QPageSize::A5));
    QCOMPARE(filled.Device()->pageLayout().pageSize().id(), QPageSize::A5);
}

void tst_NVPrintPreviewDialog::resolutionFollowsItsRow()
{
    Filled filled;
    QPrinter* device = filled.Device();
    QCOMPARE(device->resolution(), 300);
    filled.List("m_pDPI")->setCurrentIndex(2);
    QCOMPARE(device->resolution(), 600);
    filled.List("m_pDPI")->setCurrentIndex(-1);
    QCOMPARE(device->resolution(), 72);
}

void tst_NVPrintPreviewDialog::orientationFollowsItsRow()
{
    Filled filled;
    const QPrinter* device = filled.Device();
    filled.List("m_pOrientation")->setCurrentIndex(1);
    QCOMPARE(device->pageLayout().orientation(), QPageLayout::Landscape);
    filled.List("m_pOrientation")->setCurrentIndex(0);
    QCOMPARE(device->pageLayout().orientation(), QPageLayout::Portrait);
    filled.List("m_pOrientation")->setCurrentIndex(-1);
    QCOMPARE(device->pageLayout().orientation(), QPageLayout::Landscape);
}

void tst_NVPrintPreviewDialog::colorIsThatOfThePrinter()
{
    Filled filled;
    const QPrinter* device = filled.Device();
    filled.Button("m_pColor")->click();
    QCOMPARE(device->colorMode(), QPrinter::GrayScale);
    filled.Button("m_pColor")->click();
    QCOMPARE(device->colorMode(), QPrinter::Color);
}

void tst_NVPrintPreviewDialog::fixedPageShowsItsSize_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("unit");
    QTest::addColumn<QSizeF>("size");
    QTest::newRow("A4, mm") << 0 << 0 << QSizeF(210, 297);
    QTest::newRow("Letter, mm") << 1 << 0 << QSizeF(215.9, 279.4);
    QTest::newRow("Letter, in") << 1 << 2 << QSizeF(8.5, 11);
    QTest::newRow("A5, point") << 2 << 1 << QSizeF(420, 595);
    QTest::newRow("Letter, pica") << 1 << 3 << QSizeF(51, 66);
}

void tst_NVPrintPreviewDialog::fixedPageShowsItsSize()
{
    QFETCH(int, row);
    QFETCH(int, unit);
    QFETCH(QSizeF, size);
    Filled filled;
    filled.List("m_pPageSize")->setCurrentIndex(3);
    filled.List("m_pUnits")->setCurrentIndex(unit);
    filled.List("m_pPageSize")->setCurrentIndex(row);
    const QDoubleSpinBox* width = filled.Box("m_pPageWidth");
    const QDoubleSpinBox* height = filled.Box("m_pPageHeight");
    QVERIFY(width->isReadOnly() && height->isReadOnly());
    QCOMPARE(QSizeF(width->value(), height->value()), size);
    QCOMPARE(QSizeF(width->maximum(), height->maximum()), size);
}

void tst_NVPrintPreviewDialog::customPageCanBeTyped_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<double>("most");
    QTest::newRow("mm") << 0 << 1000.0;
    QTest::newRow("point") << 1 << 2835.0;
    QTest::newRow("in") << 2 << 39.37;
    QTest::newRow("pica") << 3 << 236.22;
}

void tst_NVPrintPreviewDialog::customPageCanBeTyped()
{
    QFETCH(int, unit);
    QFETCH(double, most);
    Filled filled;
    filled.List("m_pUnits")->setCurrentIndex(unit);
    filled.List("m_pPageSize")->setCurrentIndex(3);
    QDoubleSpinBox* width = filled.Box("m_pPageWidth");
    QDoubleSpinBox* height = filled.Box("m_pPageHeight");
    QVERIFY(!width->isReadOnly() && !height->isReadOnly());
    QVERIFY(qAbs(width->maximum() - most) < 0.011);
    QCOMPARE(height->maximum(), width->maximum());
    const double before = height->value();
    QVERIFY(filled.Show());
    width->setFocus();
    width->selectAll();
    QTest::keyClicks(width, "7.5");
    QCOMPARE(width->value(), 7.5);
    QCOMPARE(height->value(), before);
    const double expected = 7.5 / PerInch[unit] * 72;
    QVERIFY(qAbs(filled.Device()->pageLayout().pageSize().sizePoints().width() - expected) <= 0.5);
    height->setFocus();
    height->selectAll();
    QTest::keyClicks(height, "9");
    QCOMPARE(width->value(), 7.5);
    QVERIFY(qAbs(filled.Device()->pageLayout().pageSize().sizePoints().height() - 9 / PerInch[unit] * 72) <=
            0.5);
}

void tst_NVPrintPreviewDialog::customPageIsStoredInTheUnitOfTheMoment()
{
    Filled filled;
    filled.List("m_pPageSize")->setCurrentIndex(3);
    filled.Box("m_pPageWidth")->setValue(100);
    filled.List("m_pUnits")->setCurrentIndex(2);
    filled.Box("m_pPageHeight")->setValue(4);
    QCOMPARE(filled.Box("m_pPageWidth")->value(), 3.94);
    filled.List("m_pUnits")->setCurrentIndex(0);
    QCOMPARE(filled.Box("m_pPageHeight")->value(), 101.6);
    // 3.94 inches, not the 100 millimetres from before.
    QCOMPARE(filled.Box("m_pPageWidth")->value(), 100.08);
}

void tst_NVPrintPreviewDialog::customPageIsRememberedBehindAFixedOne()
{
    Filled filled;
    QComboBox* pages = filled.List("m_pPageSize");
    pages->setCurrentIndex(3);
    QCOMPARE(filled.Box("m_pPageWidth")->value(), 210.0);
    QCOMPARE(filled.Box("m_pPageHeight")->value(), 297.0);
    filled.Box("m_pPageWidth")->setValue(123);
    pages->setCurrentIndex(2);
    QCOMPARE(filled.Box("m_pPageWidth")->value(), 148.0);
    pages->setCurrentIndex(3);
    QCOMPARE(filled.Box("m_pPageWidth")->value(), 123.0);
    QCOMPARE(filled.Box("m_pPageHeight")->value(), 297.0);
}

void tst_NVPrintPreviewDialog::devicePageIsThatOfTheRow()
{
    Filled filled;
    const QPrinter* device = filled.Device();
    filled.List("m_pPageSize")->setCurrentIndex(1);
    QCOMPARE(device->pageLayout().pageSize().id(), QPageSize::Letter);
    filled.List("m_pPageSize")->setCurrentIndex(3);
    filled.Box("m_pPageWidth")->setValue(100);
    QCOMPARE(device->pageLayout().pageSize().sizePoints(), QSize(283, 842));
    // Without a row it is A4.
    filled.List("m_pPageSize")->setCurrentIndex(-1);
    QCOMPARE(device->pageLayout().pageSize().id(), QPageSize::A4);
}

void tst_NVPrintPreviewDialog::unitsShowEverywhere_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<double>("limit");
    QTest::newRow("mm") << 0 << " mm" << 1000.0;
    QTest::newRow("point") << 1 << " point" << 2835.0;
    QTest::newRow("in") << 2 << " in" << 39.37;
    QTest::newRow("pica") << 3 << " pica" << 236.22;
}

void tst_NVPrintPreviewDialog::unitsShowEverywhere()
{
    QFETCH(int, unit);
    QFETCH(QString, suffix);
    QFETCH(double, limit);
    Filled filled;
    filled.List("m_pUnits")->setCurrentIndex(3 - unit);
    filled.List("m_pUnits")->setCurrentIndex(unit);
    for (const QString& name : AllLengthNames)
        QCOMPARE(filled.Box(qPrintable(name))->suffix(), suffix);
    for (const QString& name : LengthNames)
    {
        QVERIFY2(qAbs(filled.Box(qPrintable(name))->maximum() - limit) < 0.011, qPrintable(name));
        QVERIFY2(qAbs(filled.Box(qPrintable(name))->minimum() + limit) < 0.011, qPrintable(name));
    }
}

// Row 2 is A5, and inches are unit 2: for a moment the boxes are as large as A5 at most.
void tst_NVPrintPreviewDialog::unitsPassThroughThePageOfTheSameNumber()
{
    Filled filled;
    const QSignalSpy widths(filled.Box("m_pPageWidth"), qOverload<double>(&QDoubleSpinBox::valueChanged));
    filled.List("m_pUnits")->setCurrentIndex(2);
    QCOMPARE(widths.size(), 2);
    QCOMPARE(widths.at(0).first().toDouble(), 5.83);
    QCOMPARE(widths.at(1).first().toDouble(), 8.27);
    // Custom is row 3, like the pica: its limit leaves the 8.27 as they are.
    filled.List("m_pUnits")->setCurrentIndex(3);
    QCOMPARE(widths.size(), 3);
    QCOMPARE(widths.at(2).first().toDouble(), 49.58);
    QCOMPARE(filled.Box("m_pPageWidth")->maximum(), 49.58);
}

void tst_NVPrintPreviewDialog::unitsConvertEachLength_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    for (int from = 0; from < 4; ++from)
        for (int to = 0; to < 4; ++to)
            if (from != to)
                QTest::newRow(qPrintable(QString("%1 to %2").arg(from).arg(to))) << from << to;
}

void tst_NVPrintPreviewDialog::unitsConvertEachLength()
{
    QFETCH(int, from);
    QFETCH(int, to);
    Filled filled;
    filled.List("m_pUnits")->setCurrentIndex(from);
    double length = 0.5;
    for (const QString& name : LengthNames)
        filled.Box(qPrintable(name))->setValue(length += 1.25);
    PaintLog log(&filled.dialog);
    filled.List("m_pUnits")->setCurrentIndex(to);
    QCOMPARE(log.requests.size(), 1);
    length = 0.5;
    for (const QString& name : LengthNames)
    {
        length += 1.25;
        double expected = length / PerInch[from] * PerInch[to];
        if (to == 1)
            expected = std::round(expected);
        const double got = filled.Box(qPrintable(name))->value();
        QVERIFY2(qAbs(got - expected) < 0.006,
                 qPrintable(QString("%1: %2, not %3").arg(name).arg(got).arg(expected)));
    }
}

void tst_NVPrintPreviewDialog::unitsAndBackKeepTheLengths()
{
    Filled filled;
    double length = -300;
    for (const QString& name : LengthNames)
        filled.Box(qPrintable(name))->setValue(length += 77.77);
    filled.List("m_pUnits")->setCurrentIndex(2);
    filled.List("m_pUnits")->setCurrentIndex(0);
    length = -300;
    for (const QString& name : LengthNames)
        QVERIFY(qAbs(filled.Box(qPrintable(name))->value() - (length += 77.77)) <= 0.005 * 25.4 + 0.01);
}

void tst_NVPrintPreviewDialog::noUnitCountsAsMillimetres()
{
    Filled filled;
    filled.List("m_pUnits")->setCurrentIndex(2);
    filled.Box("m_pXOffset")->setValue(1);
    filled.List("m_pUnits")->setCurrentIndex(-1);
    QCOMPARE(filled.Box("m_pXOffset")->suffix(), QString(" "));
    QCOMPARE(filled.Box("m_pXOffset")->value(), 25.4);
    QCOMPARE(filled.Box("m_pPageWidth")->value(), 210.0);
}

void tst_NVPrintPreviewDialog::geometryIsThatOfTheForm()
{
    Filled filled;
    filled.List("m_pUnits")->setCurrentIndex(2);
    filled.SetMargins(1, 0.5, 2, 0.25);
    QCOMPARE(filled.dialog.GetPageRect(), QRectF(0, 0, 2479, 3508));
    QCOMPARE(filled.dialog.GetClipRect(), QRectF(300, 600, 2479 - 450, 3508 - 675));
    filled.Alignment()->SetState(Place::BottomLeft);
    filled.Box("m_pXOffset")->setValue(1.5);
    filled.Box("m_pYOffset")->setValue(-1);
    QCOMPARE(filled.dialog.GetAlignmentOffset(QRectF(0, 0, 100, 50)),
             QPointF(300 + 450, 600 + 2833 - 50 - 300));
    filled.List("m_pRotate")->setCurrentIndex(4);
    const QTransform transform = filled.dialog.CalcAffineTransformation();
    QCOMPARE(transform.map(QPointF(600, 400)), QPointF(750, 600 + 2833 - 400 - 300));
    QCOMPARE(transform.map(QPointF(0, 0)), QPointF(750 + 600, 600 + 2833 - 300));
    // Landscape, with the shape of the paper for "Auto".
    filled.List("m_pOrientation")->setCurrentIndex(1);
    QCOMPARE(filled.dialog.GetPageRect(), QRectF(0, 0, 3508, 2479));
    filled.List("m_pRotate")->setCurrentIndex(1);
    QCOMPARE(filled.dialog.CalcAffineTransformation().m11(), 1.0);
    filled.List("m_pOrientation")->setCurrentIndex(0);
    QCOMPARE(filled.dialog.CalcAffineTransformation().m11(), 0.0);
}

void tst_NVPrintPreviewDialog::pageClipIsTrimmedToTheSheet()
{
    Filled filled;
    filled.List("m_pUnits")->setCurrentIndex(2);
    filled.SetMargins(-1, 1, -2, -3);
    QCOMPARE(filled.dialog.GetClipRect(), QRectF(-300, -600, 2479, 3508 + 1500));
    QCOMPARE(filled.dialog.GetPageClipRect(), QRectF(0, 0, 2179, 3508));
}

void tst_NVPrintPreviewDialog::noRoomGivesAnEmptyClip()
{
    Filled filled;
    filled.SetMargins(150, 150, 0, 0);
    QCOMPARE(filled.dialog.GetClipRect(), QRectF(0, 0, 0, 0));
    QVERIFY(filled.dialog.GetPageClipRect().isEmpty());
    filled.SetMargins(0, 0, 150, 150);
    QCOMPARE(filled.dialog.GetClipRect(), QRectF(0, 0, 0, 0));
    filled.SetMargins(0, 0, 100, 150);
    QVERIFY(!filled.dialog.GetClipRect().isEmpty());
}

void tst_NVPrintPreviewDialog::resolutionChangesThePrintedSize()
{
    Filled filled;
    for (const int row : {0, 1, 2})
    {
        filled.List("m_pDPI")->setCurrentIndex(row);
        const double inches =
            filled.dialog.CalcAffineTransformation().mapRect(QRectF(0, 0, 600, 400)).width() /
            filled.List("m_pDPI")->currentData().toInt();
        QCOMPARE(inches, row == 0 ? 4.0 : row == 1 ? 2.0 : 1.0);
    }
}

void tst_NVPrintPreviewDialog::scaleModesGiveTheirScale()
{
    Filled filled;
    const auto scale = [&]
    {
        const QTransform transform = filled.dialog.CalcAffineTransformation();
        return QPointF(transform.m11(), transform.m22());
    };
    QCOMPARE(scale(), QPointF(1, 1));
    filled.Button("m_pFitToPage")->click();
    QCOMPARE(scale(), QPointF(2479.0 / 600, 2479.0 / 600));
    filled.Button("m_pKeepRatio")->click();
    QCOMPARE(scale(), QPointF(2479.0 / 600, 3508.0 / 400));
    filled.Button("m_pCustom")->click();
    filled.Button("m_pCustomKeepRatio")->click();
    filled.Box("m_pCustomSX")->setValue(50);
    filled.Box("m_pCustomSY")->setValue(200);
    QCOMPARE(scale(), QPointF(0.5, 2));
    QCOMPARE(filled.dialog.CalcAffineTransformation().map(QPointF(0, 0)),
             QPointF((2479 - 300) / 2.0, (3508 - 800) / 2.0));
    filled.Button("m_pDontScale")->click();
    QCOMPARE(scale(), QPointF(1, 1));
}

void tst_NVPrintPreviewDialog::angleIsTheRow()
{
    Filled filled;
    for (const int row : {0, 1, 2, 3, 4, -1})
    {
        filled.List("m_pRotate")->setCurrentIndex(row);
        QCOMPARE(filled.dialog.GetCurrentAngle(), row);
    }
}

void tst_NVPrintPreviewDialog::changePaintsOnce_data()
{
    QTest::addColumn<Act>("prepare");
    QTest::addColumn<Act>("change");
    QTest::addColumn<int>("requests");
    const Act none = [](Filled&) {};
    const auto row = [&](const char* name, const Act& change, int requests = 1)
    { QTest::newRow(name) << none << change << requests; };
    const auto box = [&](const char* name, double value)
    { row(name, [=](Filled& filled) { filled.Box(name)->setValue(value); }); };
    const auto list = [&](const char* name, int index)
    { row(name, [=](Filled& filled) { filled.List(name)->setCurrentIndex(index); }); };
    const auto click = [](const char* name) -> Act
    { return [=](Filled& filled) { filled.Button(name)->click(); }; };
    list("m_pPageSize", 1);
    list("m_pUnits", 2);
    list("m_pDPI", 0);
    list("m_pOrientation", 1);
    list("m_pRotate", 2);
    for (const char* name :
         {"m_pLeftMargin", "m_pRightMargin", "m_pTopMargin", "m_pBottomMargin", "m_pXOffset", "m_pYOffset"})
        box(name, 5);
    box("m_pCustomSX", 50);
    box("m_pCustomSY", 50);
    box("m_pViewportScale", 77);
    row("color", click("m_pColor"));
    row("source", [](Filled& filled) { filled.dialog.SetSource(Photo(10, 10)); });
    row("alignment", [](Filled& filled) { filled.Alignment()->SetState(Place::TopLeft); });
    row(
        "alignment as it was", [](Filled& filled) { filled.Alignment()->SetState(Place::Center); }, 0);
    row("fit to page", click("m_pFitToPage"));
    row("custom", click("m_pCustom"));
    row("don't scale as it was", click("m_pDontScale"), 0);
    row("zoom in", click("m_pZoomIn"));
    row("zoom out", click("m_pZoomOut"));
    row("slider",
        [](Filled& filled) { Find<QSlider>(&filled.dialog, "m_pViewportScaleSlider")->setValue(7); });
    row(
        "copies", [](Filled& filled) { Find<QSpinBox>(&filled.dialog, "m_pCopiesNumber")->setValue(7); }, 0);
    row(
        "disabled ratio", [](Filled& filled) { filled.Button("m_pKeepRatio")->setChecked(false); }, 0);
    row(
        "ratio of equal scales",
        [](Filled& filled) { filled.Button("m_pCustomKeepRatio")->setChecked(false); }, 0);
    QTest::newRow("don't scale") << click("m_pFitToPage") << click("m_pDontScale") << 1;
    QTest::newRow("ratio") << click("m_pFitToPage") << click("m_pKeepRatio") << 1;
    QTest::newRow("custom width") << Act([](Filled& filled)
                                         { filled.List("m_pPageSize")->setCurrentIndex(3); })
                                  << Act([](Filled& filled) { filled.Box("m_pPageWidth")->setValue(99); })
                                  << 1;
    QTest::newRow("custom height") << Act([](Filled& filled)
                                          { filled.List("m_pPageSize")->setCurrentIndex(3); })
                                   << Act([](Filled& filled) { filled.Box("m_pPageHeight")->setValue(99); })
                                   << 1;
    const Act apart = [](Filled& filled)
    {
        filled.Button("m_pCustomKeepRatio")->setChecked(false);
        filled.Box("m_pCustomSX")->setValue(50);
    };
    QTest::newRow("scale by itself") << apart
                                     << Act([](Filled& filled) { filled.Box("m_pCustomSY")->setValue(70); })
                                     << 1;
    QTest::newRow("ratio of unequal scales")
        << apart << Act([](Filled& filled) { filled.Button("m_pCustomKeepRatio")->setChecked(true); }) << 1;
}

void tst_NVPrintPreviewDialog::changePaintsOnce()
{
    QFETCH(Act, prepare);
    QFETCH(Act, change);
    QFETCH(int, requests);
    Filled filled;
    prepare(filled);
    QVERIFY(filled.Show());
    PaintLog log(&filled.dialog);
    change(filled);
    QCOMPARE(log.updates.size(), requests);
    QCOMPARE(log.requests.size(), requests);
    change(filled);
    QCoreApplication::processEvents();
    QCOMPARE(log.requests.size(), log.updates.size());
}

void tst_NVPrintPreviewDialog::previewDrawsThePictureOnce()
{
    Filled filled;
    const QImage photo = Photo();
    filled.dialog.SetSource(photo);
    filled.SetMargins(10, 20, 30, 40);
    filled.List("m_pRotate")->setCurrentIndex(3);
    RecordingPrinter printer;
    QVERIFY(QMetaObject::invokeMethod(&filled.dialog, "OnPaintRequest", Q_ARG(QPrinter*, &printer)));
    QCOMPARE(printer.engine.images.size(), 1);
    QCOMPARE(printer.engine.pixmaps, 0);
    QCOMPARE(printer.engine.pages, 0);
    const RecordedImage drawn = printer.engine.images.first();
    QCOMPARE(drawn.key, photo.cacheKey());
    QCOMPARE(drawn.at, QPointF(0, 0));
    QCOMPARE(drawn.transform, filled.dialog.CalcAffineTransformation());
    QVERIFY(drawn.smooth);
    QCOMPARE(drawn.clip, filled.dialog.GetClipRect());
}

void tst_NVPrintPreviewDialog::previewDrawsMarginsGrey()
{
    Filled filled;
    filled.SetMargins(10, 20, 30, 40);
    RecordingPrinter printer;
    QVERIFY(QMetaObject::invokeMethod(&filled.dialog, "OnPaintRequest", Q_ARG(QPrinter*, &printer)));
    QCOMPARE(printer.engine.fills.size(), 1);
    const RecordedFill fill = printer.engine.fills.first();
    QCOMPARE(fill.brush, QBrush(Qt::darkGray, Qt::SolidPattern));
    QCOMPARE(fill.path.boundingRect(), filled.dialog.GetPageRect());
    const QRectF clip = filled.dialog.GetClipRect();
    QVERIFY(!fill.path.contains(clip.center()));
    QVERIFY(!fill.path.contains(clip.topLeft() + QPointF(2, 2)));
    QVERIFY(fill.path.contains(clip.topLeft() - QPointF(2, 2)));
    QVERIFY(fill.path.contains(clip.bottomRight() + QPointF(2, 2)));
}

void tst_NVPrintPreviewDialog::previewWithoutRoomIsGrey()
{
    Filled filled;
    filled.SetMargins(300, 0, 0, 0);
    RecordingPrinter printer;
    QVERIFY(QMetaObject::invokeMethod(&filled.dialog, "OnPaintRequest", Q_ARG(QPrinter*, &printer)));
    QCOMPARE(printer.engine.images.size(), 0);
    QCOMPARE(printer.engine.fills.size(), 1);
    QCOMPARE(printer.engine.fills.first().path.boundingRect(), filled.dialog.GetPageRect());
    QCOMPARE(printer.engine.fills.first().brush, QBrush(Qt::darkGray, Qt::SolidPattern));
    QVERIFY(filled.Show());
    const PagePicture page(filled.dialog);
    for (const QPointF& at : {QPointF(30, 30), QPointF(1240, 1754), QPointF(2440, 3470)})
        QCOMPARE(page.At(at.x(), at.y()), QColor(Qt::darkGray));
}

void tst_NVPrintPreviewDialog::previewShowsPictureAndMargins()
{
    Filled filled;
    filled.SetMargins(20, 20, 20, 20);
    QVERIFY(filled.Show());
    const PagePicture page(filled.dialog);
    QCOMPARE(page.At(118, 1754), QColor(Qt::darkGray));
    QCOMPARE(page.At(1240, 3390), QColor(Qt::darkGray));
    QCOMPARE(page.At(300, 300), QColor(Qt::white));
    // In the middle, 600 x 400 pixels.
    QCOMPARE(page.At(1240 - 200, 1754 - 100), QColor(Qt::red));
    QCOMPARE(page.At(1240 + 200, 1754 - 100), QColor(Qt::green));
    QCOMPARE(page.At(1240 - 200, 1754 + 100), QColor(Qt::blue));
    QCOMPARE(page.At(1240 + 200, 1754 + 100), QColor(Qt::yellow));
    QCOMPARE(page.At(1240 - 340, 1754), QColor(Qt::white));
}

// A sheet of 2479 x 3508 pixels with margins of 20, 30, 25 and 40 mm.
void tst_NVPrintPreviewDialog::previewCutsALargePictureOnAllSides()
{
    Filled filled;
    filled.dialog.SetSource(Photo(4000, 4000));
    filled.SetMargins(20, 30, 25, 40);
    QVERIFY(filled.Show());
    const PagePicture page(filled.dialog);
    const QRectF clip = filled.dialog.GetClipRect();
    QVERIFY(filled.dialog.CalcAffineTransformation().dx() < 0);
    QVERIFY(filled.dialog.CalcAffineTransformation().dy() < 0);
    const QPointF middle = clip.center();
    for (const double side : {-1.0, 1.0})
    {
        const double x = side < 0 ? clip.left() : clip.right();
        const double y = side < 0 ? clip.top() : clip.bottom();
        QCOMPARE(page.At(x + 20 * side, middle.y() - 100), QColor(Qt::darkGray));
        QCOMPARE(page.At(x - 20 * side, middle.y() - 100), QColor(side < 0 ? Qt::red : Qt::green));
        QCOMPARE(page.At(middle.x() - 100, y + 20 * side), QColor(Qt::darkGray));
        QCOMPARE(page.At(middle.x() - 100, y - 20 * side), QColor(side < 0 ? Qt::red : Qt::blue));
    }
}

void tst_NVPrintPreviewDialog::previewTurnsAWidePicture()
{
    Filled filled;
    QVERIFY(filled.Show());
    filled.List("m_pRotate")->setCurrentIndex(1);
    filled.Button("m_pFitToPage")->click();
    QCoreApplication::processEvents();
    const PagePicture page(filled.dialog);
    QCOMPARE(page.At(1240 + 600, 1754 - 900), QColor(Qt::red));
    QCOMPARE(page.At(1240 + 600, 1754 + 900), QColor(Qt::green));
    QCOMPARE(page.At(1240 - 600, 1754 - 900), QColor(Qt::blue));
    QCOMPARE(page.At(1240 - 600, 1754 + 900), QColor(Qt::yellow));
}

void tst_NVPrintPreviewDialog::previewOfNegativeMarginsEndsAtTheSheet()
{
    Filled filled;
    filled.SetMargins(-50, -50, -50, -50);
    filled.Button("m_pFitToPage")->click();
    filled.Button("m_pKeepRatio")->click();
    RecordingPrinter printer;
    QVERIFY(QMetaObject::invokeMethod(&filled.dialog, "OnPaintRequest", Q_ARG(QPrinter*, &printer)));
    QCOMPARE(printer.engine.images.first().clip, filled.dialog.GetPageRect());
    QVERIFY(printer.engine.images.first().transform.dx() < -500);
    QVERIFY(filled.Show());
    const PagePicture page(filled.dialog);
    QCOMPARE(page.At(40, 40), QColor(Qt::red));
    QCOMPARE(page.At(2440, 3460), QColor(Qt::yellow));
}

void tst_NVPrintPreviewDialog::previewKeepsADrawingOfATurnedPictureAlone_data()
{
    QTest::addColumn<int>("rotation");
    QTest::addColumn<bool>("isKept");
    QTest::newRow("none") << 0 << false;
    QTest::newRow("auto, wide") << 1 << true;
    QTest::newRow("clockwise") << 2 << true;
    QTest::newRow("counter-clockwise") << 3 << true;
    QTest::newRow("upside down") << 4 << false;
}

// A straight one is drawn in no time.
void tst_NVPrintPreviewDialog::previewKeepsADrawingOfATurnedPictureAlone()
{
    QFETCH(int, rotation);
    QFETCH(bool, isKept);
    Filled filled;
    // Before the window is there, and after each change.
    filled.List("m_pRotate")->setCurrentIndex(rotation == 2 ? 0 : 2);
    QVERIFY(filled.Show());
    filled.List("m_pRotate")->setCurrentIndex(rotation);
    for (const double margin : {10.0, 20.0})
    {
        filled.Box("m_pLeftMargin")->setValue(margin);
        const QList<QGraphicsItem*> pages = filled.Preview()->findChild<QGraphicsView*>()->scene()->items();
        QCOMPARE(pages.size(), 1);
        QCOMPARE(pages.first()->cacheMode() != QGraphicsItem::NoCache, isKept);
    }
}

void tst_NVPrintPreviewDialog::previewFillsWhatIsBesideTheSheet()
{
    Filled filled;
    QVERIFY(filled.Show());
    auto* view = filled.Preview()->findChild<QGraphicsView*>();
    const QColor color = view->scene()->backgroundBrush().color();
    const QSize size = view->viewport()->size();
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::magenta);
    view->viewport()->render(&image);
    for (const QPoint& corner : {QPoint(0, 0), QPoint(size.width() - 1, 0), QPoint(0, size.height() - 1),
                                 QPoint(size.width() - 1, size.height() - 1)})
        QCOMPARE(image.pixelColor(corner), color);
    QCOMPARE(ProbeImage(image).CountOf(Qt::magenta, 0), 0);
}

void tst_NVPrintPreviewDialog::ratioKeepsBothScalesTogether()
{
    Filled filled;
    QDoubleSpinBox* x = filled.Box("m_pCustomSX");
    QDoubleSpinBox* y = filled.Box("m_pCustomSY");
    const QSignalSpy xs(x, qOverload<double>(&QDoubleSpinBox::valueChanged));
    const QSignalSpy ys(y, qOverload<double>(&QDoubleSpinBox::valueChanged));
    x->setValue(50);
    QCOMPARE(y->value(), 50.0);
    y->setValue(75);
    QCOMPARE(x->value(), 75.0);
    QCOMPARE(xs.size(), 2);
    QCOMPARE(ys.size(), 2);
    x->setValue(75);
    QCOMPARE(xs.size(), 2);
    // The connections are whole again.
    filled.Button("m_pCustomKeepRatio")->setChecked(false);
    PaintLog log(&filled.dialog);
    x->setValue(20);
    y->setValue(30);
    QCOMPARE(log.requests.size(), 2);
    QCOMPARE(x->value(), 20.0);
}

void tst_NVPrintPreviewDialog::ratioTurnedOnTakesTheWidth()
{
    Filled filled;
    filled.Button("m_pCustomKeepRatio")->setChecked(false);
    filled.Box("m_pCustomSX")->setValue(20);
    QCOMPARE(filled.Box("m_pCustomSY")->value(), 100.0);
    filled.Button("m_pCustomKeepRatio")->setChecked(true);
    QCOMPARE(filled.Box("m_pCustomSY")->value(), 20.0);
    QCOMPARE(filled.Box("m_pCustomSX")->value(), 20.0);
}

void tst_NVPrintPreviewDialog::zoomSliderAndBoxFollowEachOther_data()
{
    QTest::addColumn<int>("slider");
    QTest::addColumn<double>("percent");
    QTest::newRow("least") << -40 << 0.01;
    QTest::newRow("middle of the lower half") << -20 << 50.01;
    QTest::newRow("a step down") << -1 << 97.5;
    QTest::newRow("actual size") << 0 << 100.0;
    QTest::newRow("a step up") << 1 << 110.0;
    QTest::newRow("middle of the upper half") << 20 << 300.0;
    QTest::newRow("most") << 40 << 500.0;
}

void tst_NVPrintPreviewDialog::zoomSliderAndBoxFollowEachOther()
{
    QFETCH(int, slider);
    QFETCH(double, percent);
    Filled filled;
    QVERIFY(filled.Show());
    auto* control = Find<QSlider>(&filled.dialog, "m_pViewportScaleSlider");
    control->setValue(slider == 3 ? 4 : 3);
    control->setValue(slider);
    QCOMPARE(control->value(), slider);
    QCOMPARE(filled.Box("m_pViewportScale")->value(), percent);
    QCOMPARE(filled.Preview()->zoomMode(), QPrintPreviewWidget::CustomZoom);
    QCOMPARE(filled.Preview()->zoomFactor(), percent / 100);
}

void tst_NVPrintPreviewDialog::zoomBoxMovesTheSlider()
{
    Filled filled;
    QVERIFY(filled.Show());
    const auto* slider = Find<QSlider>(&filled.dialog, "m_pViewportScaleSlider");
    filled.Box("m_pViewportScale")->setValue(96);
    QCOMPARE(slider->value(), -2);
    QCOMPARE(filled.Box("m_pViewportScale")->value(), 96.0);
    filled.Box("m_pViewportScale")->setValue(499);
    QCOMPARE(slider->value(), 40);
    QCOMPARE(filled.Box("m_pViewportScale")->value(), 499.0);
}

// What the box has rounded, not what the slider stands for: 57.5075 %.
void tst_NVPrintPreviewDialog::zoomFactorIsThatOfTheBox()
{
    Filled filled;
    QVERIFY(filled.Show());
    Find<QSlider>(&filled.dialog, "m_pViewportScaleSlider")->setValue(-17);
    QCOMPARE(filled.Preview()->zoomFactor(), filled.Box("m_pViewportScale")->value() / 100);
    QVERIFY(qAbs(filled.Preview()->zoomFactor() - 0.575) < 0.0002);
    QCOMPARE(rounded(filled.Preview()->zoomFactor() * 100), filled.Preview()->zoomFactor() * 100);
}

void tst_NVPrintPreviewDialog::zoomButtonsGoAStep()
{
    Filled filled;
    QVERIFY(filled.Show());
    auto* slider = Find<QSlider>(&filled.dialog, "m_pViewportScaleSlider");
    slider->setValue(5);
    filled.Button("m_pZoomIn")->click();
    QCOMPARE(slider->value(), 6);
    filled.Button("m_pZoomOut")->click();
    filled.Button("m_pZoomOut")->click();
    QCOMPARE(slider->value(), 4);
    slider->setValue(40);
    PaintLog log(&filled.dialog);
    filled.Button("m_pZoomIn")->click();
    QCOMPARE(slider->value(), 40);
    QCOMPARE(log.requests.size(), 0);
}

// Once by the box, once by itself; only by itself if the box says 100 already.
void tst_NVPrintPreviewDialog::actualSizeUpdatesTwice()
{
    Filled filled;
    QVERIFY(filled.Show());
    PaintLog log(&filled.dialog);
    filled.Button("m_pActualSize")->click();
    QCOMPARE(log.requests.size(), 2);
    QCOMPARE(filled.Box("m_pViewportScale")->value(), 100.0);
    QCOMPARE(filled.Preview()->zoomFactor(), 1.0);
    QCOMPARE(filled.Preview()->zoomMode(), QPrintPreviewWidget::CustomZoom);
    filled.Button("m_pActualSize")->click();
    QCOMPARE(log.requests.size(), 3);
}

// No new picture of the page is asked for.
void tst_NVPrintPreviewDialog::fitOnScreenFits()
{
    Filled filled;
    QVERIFY(filled.Show());
    const double fitted = filled.Box("m_pViewportScale")->value();
    filled.Button("m_pActualSize")->click();
    PaintLog log(&filled.dialog);
    filled.Button("m_pFitInView")->click();
    QCOMPARE(log.updates.size(), 0);
    QCOMPARE(filled.Preview()->zoomMode(), QPrintPreviewWidget::FitInView);
    QTRY_VERIFY(qAbs(filled.Box("m_pViewportScale")->value() - fitted) < 1);
}

void tst_NVPrintPreviewDialog::fitInViewIsThereForTheHost()
{
    Filled filled;
    QVERIFY(filled.Show());
    filled.Button("m_pActualSize")->click();
    PaintLog log(&filled.dialog);
    QVERIFY(QMetaObject::invokeMethod(&filled.dialog, "OnFitInView"));
    QCOMPARE(log.updates.size(), 1);
    QCOMPARE(filled.Preview()->zoomMode(), QPrintPreviewWidget::FitInView);
}

void tst_NVPrintPreviewDialog::previewTellsItsZoom()
{
    Filled filled;
    QVERIFY(filled.Show());
    PaintLog log(&filled.dialog);
    filled.Preview()->setZoomFactor(2.5);
    QVERIFY(QMetaObject::invokeMethod(&filled.dialog, "OnPreview"));
    QCOMPARE(filled.Box("m_pViewportScale")->value(), 250.0);
    QCOMPARE(Find<QSlider>(&filled.dialog, "m_pViewportScaleSlider")->value(), 15);
    QCOMPARE(log.updates.size(), 0);
    QCOMPARE(filled.Preview()->zoomFactor(), 2.5);
    // Out of what box and slider can show.
    filled.Preview()->setZoomFactor(9);
    QVERIFY(QMetaObject::invokeMethod(&filled.dialog, "OnPreview"));
    QCOMPARE(filled.Box("m_pViewportScale")->value(), 500.0);
    QCOMPARE(Find<QSlider>(&filled.dialog, "m_pViewportScaleSlider")->value(), 40);
}

// 104.9999 % is 105.00 % in the box, which would be a step further.
void tst_NVPrintPreviewDialog::previewTellsItsExactZoomToTheSlider()
{
    Filled filled;
    QVERIFY(filled.Show());
    filled.Preview()->setZoomFactor(1.049999);
    QVERIFY(QMetaObject::invokeMethod(&filled.dialog, "OnPreview"));
    QCOMPARE(filled.Box("m_pViewportScale")->value(), 105.0);
    QCOMPARE(Find<QSlider>(&filled.dialog, "m_pViewportScaleSlider")->value(), 0);
}

void tst_NVPrintPreviewDialog::previewThatKeepsItsZoomDrawsNoBox()
{
    Filled filled;
    QVERIFY(filled.Show());
    QDoubleSpinBox* box = filled.Box("m_pViewportScale");
    PaintCounter paints(box);
    filled.Box("m_pLeftMargin")->setValue(10);
    QCoreApplication::processEvents();
    QCOMPARE(paints.count, 0);
    // A text that stands for the same number is written out.
    box->findChild<QLineEdit*>()->setText(box->cleanText().chopped(1));
    Q_EMIT filled.Preview()->previewChanged();
    QCOMPARE(box->cleanText(), QLocale().toString(filled.Preview()->zoomFactor() * 100, 'f', 2));
    filled.Button("m_pActualSize")->click();
    QCoreApplication::processEvents();
    QVERIFY(paints.count > 0);
}

void tst_NVPrintPreviewDialog::settingsAreTheirBytes_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<Act>("set");
    QTest::newRow("don't scale") << "dont-scale"
                                 << Act(
                                        [](Filled& filled)
                                        {
                                            filled.List("m_pPageSize")->setCurrentIndex(2);
                                            filled.SetMargins(10, 20, 30.5, -40.25);
                                            filled.Alignment()->SetState(Place::TopLeft);
                                            filled.Box("m_pXOffset")->setValue(5);
                                            filled.Box("m_pYOffset")->setValue(-7.5);
                                            filled.List("m_pRotate")->setCurrentIndex(2);
                                        });
    QTest::newRow("fit to page") << "fit-to-page"
                                 << Act(
                                        [](Filled& filled)
                                        {
                                            filled.List("m_pPageSize")->setCurrentIndex(1);
                                            filled.List("m_pUnits")->setCurrentIndex(2);
                                            filled.List("m_pDPI")->setCurrentIndex(2);
                                            filled.List("m_pOrientation")->setCurrentIndex(1);
                                            filled.SetMargins(0.5, 0.25, 1, -1.5);
                                            filled.Button("m_pFitToPage")->click();
                                            filled.Button("m_pKeepRatio")->click();
                                            filled.Alignment()->SetState(Place::BottomRight);
                                            filled.Box("m_pXOffset")->setValue(2);
                                            filled.List("m_pRotate")->setCurrentIndex(1);
                                        });
    QTest::newRow("custom scale") << "custom-scale"
                                  << Act(
                                         [](Filled& filled)
                                         {
                                             filled.List("m_pUnits")->setCurrentIndex(3);
                                             filled.List("m_pDPI")->setCurrentIndex(0);
                                             filled.SetMargins(1, 2, 3, 4);
                                             filled.Button("m_pCustom")->click();
                                             filled.Button("m_pCustomKeepRatio")->click();
                                             filled.Box("m_pCustomSX")->setValue(50);
                                             filled.Box("m_pCustomSY")->setValue(200);
                                             filled.Alignment()->SetState(Place::MiddleLeft);
                                             filled.Box("m_pXOffset")->setValue(-6);
                                             filled.Box("m_pYOffset")->setValue(6);
                                             filled.List("m_pRotate")->setCurrentIndex(4);
                                         });
    QTest::newRow("custom page") << "custom-page"
                                 << Act(
                                        [](Filled& filled)
                                        {
                                            filled.List("m_pPageSize")->setCurrentIndex(3);
                                            filled.Box("m_pPageWidth")->setValue(123.45);
                                            filled.Box("m_pPageHeight")->setValue(67.8);
                                        });
    QTest::newRow("custom page, inches") << "custom-page-inches"
                                         << Act(
                                                [](Filled& filled)
                                                {
                                                    filled.List("m_pUnits")->setCurrentIndex(2);
                                                    filled.List("m_pPageSize")->setCurrentIndex(3);
                                                    filled.Box("m_pPageWidth")->setValue(5.5);
                                                    filled.Box("m_pPageHeight")->setValue(8);
                                                });
}

void tst_NVPrintPreviewDialog::settingsAreTheirBytes()
{
    QFETCH(QString, file);
    QFETCH(Act, set);
    Filled filled;
    set(filled);
    QCOMPARE(filled.dialog.SaveSettings().toHex(), Settings(file).toHex());
}

void tst_NVPrintPreviewDialog::settingsComeBack_data()
{
    settingsAreTheirBytes_data();
}

// Into a dialog that shows something else. Modes other than 0 leave "Don't scale" chosen.
void tst_NVPrintPreviewDialog::settingsComeBack()
{
    QFETCH(QString, file);
    QFETCH(Act, set);
    Filled source;
    set(source);
    Filled target;
    target.List("m_pPageSize")->setCurrentIndex(1);
    target.List("m_pOrientation")->setCurrentIndex(1);
    target.SetMargins(99, 98, 97, 96);
    target.Box("m_pYOffset")->setValue(-95);
    target.List("m_pRotate")->setCurrentIndex(3);
    if (file == "custom-page-inches")
        target.List("m_pUnits")->setCurrentIndex(2);
    target.dialog.RestoreSettings(Settings(file));
    QVariantMap expected = StateOf(source.dialog);
    for (const char* name : {"m_pFitToPage", "m_pCustom"})
        expected[name] = false;
    expected["m_pDontScale"] = true;
    QCOMPARE(StateOf(target.dialog), expected);
}

void tst_NVPrintPreviewDialog::onlyModeZeroChoosesItsButton()
{
    Filled filled;
    filled.dialog.RestoreSettings(Settings("fit-to-page"));
    QVERIFY(filled.Button("m_pDontScale")->isChecked());
    filled.Button("m_pCustom")->click();
    filled.dialog.RestoreSettings(Settings("fit-to-page"));
    QVERIFY(filled.Button("m_pCustom")->isChecked());
    QVERIFY(!filled.Button("m_pKeepRatio")->isChecked());
    QVERIFY(filled.Button("m_pCustomKeepRatio")->isChecked());
    filled.Button("m_pFitToPage")->click();
    filled.dialog.RestoreSettings(Settings("custom-scale"));
    QVERIFY(filled.Button("m_pFitToPage")->isChecked());
    QVERIFY(!filled.Button("m_pCustomKeepRatio")->isChecked());
    QCOMPARE(filled.Box("m_pCustomSY")->value(), 200.0);
    filled.dialog.RestoreSettings(Settings("dont-scale"));
    QVERIFY(filled.Button("m_pDontScale")->isChecked());
}

// 5.5 by 8 are millimetres here, which become inches.
void tst_NVPrintPreviewDialog::customSizeIsTakenInTheOldUnit()
{
    Filled filled;
    filled.dialog.RestoreSettings(Settings("custom-page-inches"));
    QCOMPARE(filled.List("m_pUnits")->currentIndex(), 2);
    QCOMPARE(filled.Box("m_pPageWidth")->value(), rounded(5.5 / 25.4));
    QCOMPARE(filled.Box("m_pPageHeight")->value(), rounded(8 / 25.4));
}

void tst_NVPrintPreviewDialog::settingsOfAnUnknownPageAreSkipped()
{
    Filled filled;
    filled.List("m_pPageSize")->setCurrentIndex(1);
    filled.dialog.RestoreSettings(Settings("unknown-page"));
    QCOMPARE(filled.List("m_pPageSize")->currentIndex(), 1);
    QCOMPARE(filled.List("m_pDPI")->currentIndex(), 1);
    QCOMPARE(filled.List("m_pUnits")->currentIndex(), 1);
    QCOMPARE(filled.List("m_pOrientation")->currentIndex(), 1);
    QCOMPARE(filled.Box("m_pLeftMargin")->value(), 9.0);
    QCOMPARE(filled.Box("m_pBottomMargin")->value(), 36.0);
    QCOMPARE(filled.Alignment()->GetState(), Place::TopRight);
    QCOMPARE(filled.Box("m_pYOffset")->value(), -72.0);
    QCOMPARE(filled.List("m_pRotate")->currentIndex(), 3);
    // A custom page that the printer lacks: its size is read over.
    filled.List("m_pPageSize")->removeItem(3);
    filled.dialog.RestoreSettings(Settings("custom-page"));
    QCOMPARE(filled.List("m_pPageSize")->currentIndex(), 1);
    QCOMPARE(filled.List("m_pUnits")->currentIndex(), 0);
    // Once more, without a change of unit that would show the page's size anew.
    filled.dialog.RestoreSettings(Settings("custom-page"));
    QCOMPARE(filled.Box("m_pPageWidth")->value(), 215.9);
    QCOMPARE(filled.Box("m_pPageHeight")->value(), 279.4);
    QCOMPARE(filled.Alignment()->GetState(), Place::Center);
}

void tst_NVPrintPreviewDialog::nothingToRestoreChangesNothing_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("no bytes") << QByteArray();
    QTest::newRow("one byte") << QByteArray(1, '\1');
    QTest::newRow("three bytes") << QByteArray("\0\0\1", 3);
    QTest::newRow("version 0") << QByteArray(200, '\0');
    QTest::newRow("version 2") << Settings("future-version");
    QTest::newRow("little-endian version 1") << QByteArray("\1\0\0\0", 4) + QByteArray(100, '\0');
    QTest::newRow("ones") << QByteArray(200, '\xff');
}

void tst_NVPrintPreviewDialog::nothingToRestoreChangesNothing()
{
    QFETCH(QByteArray, bytes);
    Filled filled;
    filled.dialog.RestoreSettings(Settings("custom-scale"));
    const QVariantMap before = StateOf(filled.dialog);
    PaintLog log(&filled.dialog);
    filled.dialog.RestoreSettings(bytes);
    QCOMPARE(StateOf(filled.dialog), before);
    QCOMPARE(log.updates.size(), 0);
}

void tst_NVPrintPreviewDialog::trailingBytesAreIgnored()
{
    Filled filled;
    filled.dialog.RestoreSettings(Settings("trailing-bytes"));
    QCOMPARE(filled.dialog.SaveSettings(), Settings("dont-scale"));
    QVERIFY(Settings("trailing-bytes").startsWith(Settings("dont-scale")));
}

void tst_NVPrintPreviewDialog::bytesCutAnywhereReadAsZeros_data()
{
    QTest::addColumn<QString>("file");
    for (const char* file : {"dont-scale", "fit-to-page", "custom-scale", "custom-page"})
        QTest::newRow(file) << QString(file);
}

// A field that is cut reads as zero, and so does all behind it. The version stands in the first four bytes.
void tst_NVPrintPreviewDialog::bytesCutAnywhereReadAsZeros()
{
    QFETCH(QString, file);
    const QByteArray whole = Settings(file);
    // Where the fields begin.
    QList<int> starts;
    QFile data(QFINDTESTDATA("../../data/printsettings/" + file + ".hex"));
    QVERIFY(data.open(QIODevice::ReadOnly));
    int position = 0;
    while (!data.atEnd())
    {
        const QByteArray line = data.readLine();
        if (line.startsWith('#'))
            continue;
        starts << position;
        position += line.indexOf(' ') / 2;
    }
    QCOMPARE(position, whole.size());
    for (int cut = 4; cut < whole.size(); ++cut)
    {
        const int start = *(std::upper_bound(starts.cbegin(), starts.cend(), cut) - 1);
        const QByteArray zeroed = whole.left(start) + QByteArray(whole.size() - start + 32, '\0');
        Filled one;
        one.dialog.RestoreSettings(whole.left(cut));
        Filled other;
        other.dialog.RestoreSettings(zeroed);
        QVERIFY2(StateOf(one.dialog) == StateOf(other.dialog), qPrintable(QString("cut at %1").arg(cut)));
    }
}

void tst_NVPrintPreviewDialog::hostileSettingsAreBounded_data()
{
    QTest::addColumn<QString>("file");
    for (const char* file : {"hostile-nan", "hostile-infinities", "hostile-rows", "hostile-lengths"})
        QTest::newRow(file) << QString(file);
}

void tst_NVPrintPreviewDialog::hostileSettingsAreBounded()
{
    QFETCH(QString, file);
    Filled filled;
    QVERIFY(filled.Show());
    filled.dialog.RestoreSettings(Settings(file));
    for (const QString& name : AllLengthNames + QStringList({"m_pCustomSX", "m_pCustomSY"}))
    {
        const QDoubleSpinBox* box = filled.Box(qPrintable(name));
        QVERIFY2(std::isfinite(box->value()) && box->value() >= box->minimum() &&
                     box->value() <= box->maximum(),
                 qPrintable(name + " " + box->text()));
    }
    for (const char* name : {"m_pPageSize", "m_pUnits", "m_pDPI", "m_pOrientation", "m_pRotate"})
        QVERIFY(filled.List(name)->currentIndex() < filled.List(name)->count());
    const int place = filled.Alignment()->GetState();
    QVERIFY(place >= 1 && place <= 9);
    const QTransform transform = filled.dialog.CalcAffineTransformation();
    QVERIFY(std::isfinite(transform.m11()) && std::isfinite(transform.dx()) && std::isfinite(transform.dy()));
    // What came of it can be saved and taken back.
    Filled other;
    other.dialog.RestoreSettings(filled.dialog.SaveSettings());
}

void tst_NVPrintPreviewDialog::disabledFlagsAreRestoredWithoutAPicture()
{
    Filled filled;
    filled.dialog.RestoreSettings(Settings("fit-to-page"));
    filled.Button("m_pKeepRatio")->setChecked(true);
    PaintLog log(&filled.dialog);
    filled.dialog.RestoreSettings(Settings("fit-to-page"));
    QVERIFY(!filled.Button("m_pKeepRatio")->isChecked());
    QCOMPARE(log.updates.size(), 0);
}

void tst_NVPrintPreviewDialog::whatIsNotSavedStays()
{
    Filled filled;
    const QByteArray before = filled.dialog.SaveSettings();
    filled.Button("m_pColor")->click();
    Find<QSpinBox>(&filled.dialog, "m_pCopiesNumber")->setValue(9);
    filled.Box("m_pViewportScale")->setValue(33);
    QCOMPARE(filled.dialog.SaveSettings(), before);
    filled.dialog.RestoreSettings(Settings("custom-scale"));
    QVERIFY(!filled.Button("m_pColor")->isChecked());
    QCOMPARE(Find<QSpinBox>(&filled.dialog, "m_pCopiesNumber")->value(), 9);
}

void tst_NVPrintPreviewDialog::printClosesAsAccepted()
{
    Filled filled;
    SignalLog log(&filled.dialog);
    ModalDriver driver([](QWidget* dialog) { ModalDriver::Press(dialog, "Print"); });
    QCOMPARE(filled.dialog.Exec(), int(KXDialog::ResultAccepted));
    QVERIFY(driver.Finished());
    QCOMPARE(TakePrinted().size(), 1);
    QVERIFY(!QGuiApplication::overrideCursor());
    QCOMPARE(log.Count("Accepted"), 1);
    QCOMPARE(log.Count("Rejected"), 0);
}

void tst_NVPrintPreviewDialog::printWithoutRoomClosesAsAccepted()
{
    Filled filled;
    filled.SetMargins(300, 0, 0, 0);
    ModalDriver driver([](QWidget* dialog) { ModalDriver::Press(dialog, "Print"); });
    QCOMPARE(filled.dialog.Exec(), int(KXDialog::ResultAccepted));
    QVERIFY(driver.Finished());
    QVERIFY(!QGuiApplication::overrideCursor());
}

void tst_NVPrintPreviewDialog::printDisablesTheDialogUntilItIsDone()
{
    Filled filled;
    filled.SetMargins(300, 0, 0, 0);
    QVERIFY(filled.Show());
    BusyThreads threads;
    QTest::mouseClick(Find<QDialogButtonBox>(&filled.dialog, "m_pButtonBox")->button(QDialogButtonBox::Ok),
                      Qt::LeftButton);
    QVERIFY(!filled.dialog.isEnabled());
    QVERIFY(QGuiApplication::overrideCursor());
    QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    // Out of reach.
    QTest::mouseClick(Find<QDialogButtonBox>(&filled.dialog, "m_pButtonBox")->button(QDialogButtonBox::Close),
                      Qt::LeftButton);
    QTest::keyClick(&filled.dialog, Qt::Key_Escape);
    QTest::keyClick(&filled.dialog, Qt::Key_Return);
    QVERIFY(filled.dialog.isVisible());
    threads.Open();
    QTRY_VERIFY(!filled.dialog.isVisible());
    QCOMPARE(filled.dialog.GetResult(), int(KXDialog::ResultAccepted));
    QVERIFY(!QGuiApplication::overrideCursor());
    QVERIFY(!filled.dialog.isEnabled());
}

void tst_NVPrintPreviewDialog::printTakesAllFromTheForm()
{
    Filled filled;
    const QImage photo = Photo();
    filled.dialog.SetSource(photo);
    filled.List("m_pPageSize")->setCurrentIndex(2);
    filled.List("m_pDPI")->setCurrentIndex(2);
    filled.List("m_pOrientation")->setCurrentIndex(1);
    filled.List("m_pRotate")->setCurrentIndex(3);
    filled.SetMargins(-10, 20, 30, -40);
    filled.Button("m_pColor")->click();
    Find<QSpinBox>(&filled.dialog, "m_pCopiesNumber")->setValue(7);
    QVERIFY(QMetaObject::invokeMethod(&filled.dialog, "OnPrint"));
    QTRY_COMPARE(filled.dialog.GetResult(), int(KXDialog::ResultAccepted));
    const QList<Printed> printed = TakePrinted();
    QCOMPARE(printed.size(), 1);
    QVERIFY(printed.first().thread != QThread::currentThread());
    const PrintJob job = printed.first().job;
    QCOMPARE(job.image.cacheKey(), photo.cacheKey());
    QVERIFY(job.printer.isNull());
    QCOMPARE(job.pageSize, QPageSize(QPageSize::A5));
    QCOMPARE(job.orientation, QPrinter::Landscape);
    QCOMPARE(job.transform, filled.dialog.CalcAffineTransformation());
    // Not trimmed to the sheet.
    QCOMPARE(job.clipRect, filled.dialog.GetClipRect());
    QVERIFY(job.clipRect != filled.dialog.GetPageClipRect());
    QCOMPARE(job.resolution, 600);
    QCOMPARE(job.copies, 7);
    QVERIFY(!job.color);
}

// Not from the printer of the preview.
void tst_NVPrintPreviewDialog::printTakesThePageFromItsRow()
{
    Filled filled;
    filled.List("m_pPageSize")->setCurrentIndex(3);
    filled.Box("m_pPageWidth")->setValue(100);
    filled.Device()->setPageSize(QPageSize(QPageSize::A0));
    filled.Device()->setResolution(99);
    QVERIFY(QMetaObject::invokeMethod(&filled.dialog, "OnPrint"));
    QTRY_COMPARE(filled.dialog.GetResult(), int(KXDialog::ResultAccepted));
    const QList<Printed> printed = TakePrinted();
    QCOMPARE(printed.size(), 1);
    QCOMPARE(printed.first().job.pageSize.sizePoints(), QSize(283, 842));
    QCOMPARE(printed.first().job.resolution, 300);
    QCOMPARE(printed.first().job.orientation, QPrinter::Portrait);
    QVERIFY(printed.first().job.color);
}

void tst_NVPrintPreviewDialog::printTakesALandscapeOfAnyOtherRow()
{
    Filled filled;
    filled.List("m_pOrientation")->setCurrentIndex(-1);
    QVERIFY(QMetaObject::invokeMethod(&filled.dialog, "OnPrint"));
    QTRY_COMPARE(filled.dialog.GetResult(), int(KXDialog::ResultAccepted));
    QCOMPARE(TakePrinted().value(0).job.orientation, QPrinter::Landscape);
}

// What is set while the job waits doesn't reach it.
void tst_NVPrintPreviewDialog::printWorksOnACopy()
{
    Filled filled;
    const QRectF clip = filled.dialog.GetClipRect();
    BusyThreads threads;
    QVERIFY(QMetaObject::invokeMethod(&filled.dialog, "OnPrint"));
    filled.SetMargins(10, 10, 10, 10);
    filled.dialog.SetSource(QImage());
    threads.Open();
    QTRY_COMPARE(filled.dialog.GetResult(), int(KXDialog::ResultAccepted));
    const QList<Printed> printed = TakePrinted();
    QCOMPARE(printed.size(), 1);
    QCOMPARE(printed.first().job.clipRect, clip);
    QCOMPARE(printed.first().job.image.size(), QSize(600, 400));
}

void tst_NVPrintPreviewDialog::closeRejects()
{
    Filled filled;
    ModalDriver driver([](QWidget* dialog) { ModalDriver::Press(dialog, QDialogButtonBox::Close); });
    QCOMPARE(filled.dialog.Exec(), int(KXDialog::ResultRejected));
    QVERIFY(driver.Finished());
    ModalDriver escape([](QWidget* dialog) { ModalDriver::PressKey(dialog, Qt::Key_Escape); });
    QCOMPARE(filled.dialog.Exec(), int(KXDialog::ResultClosed));
    QVERIFY(escape.Finished());
}

// A box that tells its value only when it loses the focus does so while the dialog goes.
void tst_NVPrintPreviewDialog::deletedWithAValueUntold()
{
    auto* filled = new Filled;
    QVERIFY(filled->Show());
    QDoubleSpinBox* box = filled->Box("m_pLeftMargin");
    box->setKeyboardTracking(false);
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, "12");
    QCOMPARE(box->value(), 0.0);
    const QSignalSpy told(box, qOverload<double>(&QDoubleSpinBox::valueChanged));
    delete filled;
    QCOMPARE(told.size(), 1);
}

// The job goes on; the cursor comes back.
void tst_NVPrintPreviewDialog::deletedWhileItPrints()
{
    BusyThreads threads;
    {
        Filled filled;
        QVERIFY(filled.Show());
        QVERIFY(QMetaObject::invokeMethod(&filled.dialog, "OnPrint"));
        QVERIFY(QGuiApplication::overrideCursor());
    }
    QVERIFY(!QGuiApplication::overrideCursor());
    threads.Open();
    QCoreApplication::processEvents();
    QCOMPARE(TakePrinted().size(), 1);
    QVERIFY(!QGuiApplication::overrideCursor());
}

void tst_NVPrintPreviewDialog::deletedAfterItsJob()
{
    Filled* filled = new Filled;
    filled->SetMargins(300, 0, 0, 0);
    QVERIFY(QMetaObject::invokeMethod(&filled->dialog, "OnPrint"));
    QThreadPool::globalInstance()->waitForDone();
    // The end has been reported, but not yet delivered.
    delete filled;
    QVERIFY(!QGuiApplication::overrideCursor());
    QCoreApplication::processEvents();
    QVERIFY(!QGuiApplication::overrideCursor());
}

void tst_NVPrintPreviewDialog::twoDialogsPrintInARow()
{
    for (int i = 0; i < 2; ++i)
    {
        Filled filled;
        filled.SetMargins(300, 0, 0, 0);
        ModalDriver driver([](QWidget* dialog) { ModalDriver::Press(dialog, "Print"); });
        QCOMPARE(filled.dialog.Exec(), int(KXDialog::ResultAccepted));
        QVERIFY(driver.Finished());
    }
    QVERIFY(!QGuiApplication::overrideCursor());
}

NV_TEST_MAIN(tst_NVPrintPreviewDialog)

#include "tst_NVPrintPreviewDialog.moc"
