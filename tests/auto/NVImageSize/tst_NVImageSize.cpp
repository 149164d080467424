// The dialog for a new image size: its form, the arithmetic that ties its fields together, and its messages.

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTranslator>
#include <QtTest>

#include <cmath>
#include <limits>

#include "BarForm.h"
#include "CutText.h"
#include "KXCommonComboBox.h"
#include "KXDocumentInterface.h"
#include "KXMdiArea.h"
#include "KXMessageBox.h"
#include "ModalDriver.h"
#include "NVImageSize.h"
#include "NVMeasureUnit.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

const double Infinity = std::numeric_limits<double>::infinity();
const double NotANumber = std::numeric_limits<double>::quiet_NaN();
const int Most = std::numeric_limits<int>::max();
const int Least = std::numeric_limits<int>::min();

enum Unit
{
    Pixels,
    Percent,
    Inches,
    Millimetres,
    Centimetres,
    Points,
    Picas
};

// An explicit instantiation may name private members, which is how the tests below reach three of them.
template <class Tag, typename Tag::Type Member>
struct Reveal
{
    friend typename Tag::Type Revealed(Tag) { return Member; }
};
struct RangesTag
{
    using Type = QRectF (NVImageSize::*)(bool, int, double, int, int) const;
    friend Type Revealed(RangesTag);
};
struct TextTag
{
    using Type = QString (NVImageSize::*)(qint64) const;
    friend Type Revealed(TextTag);
};
struct BytesTag
{
    using Type = qint64 (NVImageSize::*)(int, int) const;
    friend Type Revealed(BytesTag);
};
template struct Reveal<RangesTag, &NVImageSize::Ranges>;
template struct Reveal<TextTag, &NVImageSize::GetNormilizedImageSize>;
template struct Reveal<BytesTag, &NVImageSize::CalcMemorySize>;

QImage Picture(const QString& name)
{
    return QPixmap("theme:" + name + ".png").toImage();
}

// Which of the three links a label shows: 0 for none, -1 for another picture.
int LinkOf(const QLabel* label)
{
    const QPixmap pixmap = label->pixmap(Qt::ReturnByValue);
    if (pixmap.isNull())
        return 0;
    static const QImage links[] = {Picture("image_size_dialog_link1"), Picture("image_size_dialog_link2"),
                                   Picture("image_size_dialog_link3")};
    for (int i = 0; i < 3; ++i)
    {
        if (pixmap.toImage() == links[i])
            return i + 1;
    }
    return -1;
}

// The dialog and its controls.
struct Host
{
    explicit Host(const QSize& size = QSize(1000, 500), double dpi = 72.0, QWidget* parent = nullptr)
        : dialog(new NVImageSize(dpi, size, parent))
    {
        width = Find<QDoubleSpinBox>("m_pNewWidth");
        height = Find<QDoubleSpinBox>("m_pNewHeight");
        resolution = Find<QDoubleSpinBox>("m_pResolution");
        widthUnits = Find<QComboBox>("m_pWidthUnits");
        heightUnits = Find<QComboBox>("m_pHeightUnits");
        constrain = Find<QCheckBox>("m_pConstrain");
        resample = Find<QCheckBox>("m_pResample");
    }
    ~Host() { delete dialog; }
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    template <class T>
    T* Find(const char* name) const
    {
        T* control = dialog->findChild<T*>(name);
        if (!control)
            qFatal("no control %s", name);
        return control;
    }
    bool Show() const
    {
        dialog->show();
        return QTest::qWaitForWindowActive(dialog);
    }
    QPushButton* Button(QDialogButtonBox::StandardButton which) const
    {
        return Find<QDialogButtonBox>("m_pButtonBox")->button(which);
    }
    QString Title() const { return Find<QGroupBox>("m_pDimensionGroup")->title(); }
    QString LabelText(const char* name) const { return Find<QLabel>(name)->text(); }
    int Link(const char* name) const { return LinkOf(Find<QLabel>(name)); }

    // One edit by its text: "w=333", "h=2.5", "dpi=300", "unit=2", "keep=0", "resample=0", "reset".
    void Edit(const QString& edit) const
    {
        const QString what = edit.section('=', 0, 0);
        const double value = edit.section('=', 1).toDouble();
        if (what == "w")
            width->setValue(value);
        else if (what == "h")
            height->setValue(value);
        else if (what == "dpi")
            resolution->setValue(value);
        else if (what == "unit")
            widthUnits->setCurrentIndex(int(value));
        else if (what == "keep")
            constrain->setChecked(value != 0.0);
        else if (what == "resample")
            resample->setChecked(value != 0.0);
        else if (what == "reset")
            Button(QDialogButtonBox::Reset)->click();
        else
            qFatal("no edit %s", qPrintable(edit));
    }
    void Edits(const QString& edits) const
    {
        const QStringList list = edits.split(", ", Qt::SkipEmptyParts);
        for (const QString& edit : list)
            Edit(edit);
    }

    // "333x167, boxes 333 and 167".
    QString Sizes() const
    {
        const QSize size = dialog->GetNewSize();
        return QString("%1x%2, boxes %3 and %4")
            .arg(size.width())
            .arg(size.height())
            .arg(width->text(), height->text());
    }
    // All that can be seen.
    QString Fields() const
    {
        return QString("%1, labels %2 and %3, %4, dpi %5, units %6 and %7, keep %8, links %9 and ")
                   .arg(Sizes(), LabelText("m_pPixelWidth"), LabelText("m_pPixelHeight"), Title(),
                        resolution->text())
                   .arg(widthUnits->currentIndex())
                   .arg(heightUnits->currentIndex())
                   .arg(constrain->isChecked())
                   .arg(Link("m_pConstrainDimensions")) +
            QString::number(Link("m_pConstrainProportions"));
    }

    QPointer<NVImageSize> dialog;
    QDoubleSpinBox* width = nullptr;
    QDoubleSpinBox* height = nullptr;
    QDoubleSpinBox* resolution = nullptr;
    QComboBox* widthUnits = nullptr;
    QComboBox* heightUnits = nullptr;
    QCheckBox* constrain = nullptr;
    QCheckBox* resample = nullptr;
};

// Form texts in capitals, texts of the code in brackets.
class Shouting : public QTranslator
{
public:
    Shouting() { QCoreApplication::installTranslator(this); }
    ~Shouting() override { QCoreApplication::removeTranslator(this); }
    Shouting(const Shouting&) = delete;
    Shouting& operator=(const Shouting&) = delete;

    QString translate(const char* context, const char* text, const char*, int) const override
    {
        const bool ours = qstrcmp(context, "ImageSize") == 0 || qstrcmp(context, "NVMeasureUnit") == 0;
        if (ours)
            return QString::fromUtf8(text).toUpper();
        return qstrcmp(context, "NVImageSize") == 0 ? '<' + QString::fromUtf8(text) + '>' : QString();
    }
    bool isEmpty() const override { return false; }
};

int Truncated(double value)
{
    if (value != value)
        return 0;
    if (value > 2147483647.0)
        return Most;
    if (value < -2147483648.0)
        return Least;
    return int(value);
}

QString MemoryText(int width, int height)
{
    // A long double holds all of this exactly; what 64 bits cannot hold becomes the nearest that they can.
    const long double most = std::numeric_limits<qint64>::max() / 4 * 4;
    const long double bytes = qBound(-most, static_cast<long double>(width) * height * 4, most);
    if (bytes < 1024)
        return QString("%1 b").arg(qint64(bytes));
    if (bytes < 1048576)
        return QString::number(double(bytes) / 1024, 'f', 1) + " Kb";
    if (bytes < 1073741824)
        return QString::number(double(bytes) / 1048576, 'f', 1) + " Mb";
    return QString::number(double(bytes) / 1073741824, 'f', 1) + " Gb";
}

// The arithmetic once more, with numbers in place of controls.
struct Arithmetic
{
    Arithmetic(const QSize& size, double initialDpi) : now(size), start(initialDpi) { Reset(); }

    // What a box with that many decimals makes of a value.
    static double Boxed(double value, int decimals)
    {
        const double rounded = QString::number(value, 'f', decimals).toDouble();
        return qBound(decimals ? 0.01 : 0.0, rounded, 100000.0);
    }
    static double BoxedDpi(double value)
    {
        return qBound(1.0, QString::number(value, 'f', 3).toDouble(), 3200.0);
    }

    void Reset()
    {
        next = now;
        dpi = BoxedDpi(start);
        unit = Pixels;
        keep = true;
        Refresh(true, true);
        lowerLink = 1;
        upperLink = 2;
    }
    void Width(double value)
    {
        value = Boxed(value, Decimals());
        if (value == widthBox)
            return;
        widthBox = value;
        next.rwidth() = FromBox(value, now.width());
        if (keep)
            next.rheight() = Truncated(next.width() / Ratio() + 0.5);
        Refresh(false, keep);
    }
    void Height(double value)
    {
        value = Boxed(value, Decimals());
        if (value == heightBox)
            return;
        heightBox = value;
        next.rheight() = FromBox(value, now.height());
        if (keep)
            next.rwidth() = Truncated(next.height() * Ratio() + 0.5);
        Refresh(keep, false);
    }
    void Dpi(double value)
    {
        value = BoxedDpi(value);
        if (value == dpi)
            return;
        dpi = value;
        if (unit >= Inches)
        {
            next.rwidth() = Truncated(widthBox * dpi / Factor());
            next.rheight() = Truncated(heightBox * dpi / Factor());
            if (keep)
                next.rwidth() = Truncated(next.height() * Ratio());
        }
        Refresh(true, true);
    }
    void SetUnit(int index)
    {
        if (index == unit)
            return;
        unit = index;
        // A box keeps its number, rounded, until it is refreshed.
        widthBox = Boxed(widthBox, Decimals());
        heightBox = Boxed(heightBox, Decimals());
        Refresh(true, true);
    }
    void Keep(bool on)
    {
        if (on == keep)
            return;
        keep = on;
        lowerLink = on && resample ? 1 : 0;
        upperLink = resample ? (on ? 2 : 0) : 3;
        if (on)
        {
            next = now;
            Refresh(true, true);
        }
    }
    void Refresh(bool refreshWidth, bool refreshHeight)
    {
        const double percentW = double(next.width()) / std::max(1, now.width()) * 100.0;
        const double percentH = double(next.height()) / std::max(1, now.height()) * 100.0;
        const bool copyW = keep && !refreshHeight;
        if (refreshWidth)
            widthBox = Boxed(ToBox(next.width(), copyW ? heightBox : percentW), Decimals());
        if (refreshHeight)
            heightBox = Boxed(ToBox(next.height(), keep ? widthBox : percentH), Decimals());
        title = "Pixel dimensions: " + MemoryText(now.width(), now.height());
        if (resample && next.width() != now.width())
            title = "Pixel dimensions: " + MemoryText(next.width(), next.height()) + " (was " +
                MemoryText(now.width(), now.height()) + ")";
    }

    int Decimals() const { return unit == Pixels ? 0 : 2; }
    double Factor() const
    {
        static const double factors[] = {1.0, 25.4, 2.54, 72.0, 6.0};
        return factors[unit - Inches];
    }
    double Ratio() const { return double(std::max(1, now.width())) / std::max(1, now.height()); }
    int FromBox(double value, int side) const
    {
        if (unit == Pixels)
            return Truncated(value + 0.5);
        return unit == Percent ? Truncated(side * value / 100.0 + 0.5) : Truncated(value * dpi / Factor());
    }
    double ToBox(int side, double percent) const
    {
        if (unit == Pixels)
            return side;
        return unit == Percent ? percent : side * Factor() / dpi;
    }

    // As Host::Fields() says it.
    QString Fields() const
    {
        const QString w = QString::number(next.width());
        const QString h = QString::number(next.height());
        return w + "x" + h + ", boxes " + QString::number(widthBox, 'f', Decimals()) + " and " +
            QString::number(heightBox, 'f', Decimals()) + ", labels " + w + " and " + h + ", " + title +
            ", dpi " + QString::number(dpi, 'f', 3) + ", units " + QString::number(unit) + " and " +
            QString::number(unit) + ", keep " + QString::number(keep) + ", links " +
            QString::number(lowerLink) + " and " + QString::number(upperLink);
    }

    QSize now;
    double start;
    QSize next;
    double dpi = 0.0;
    int unit = Pixels;
    bool keep = true;
    bool resample = true;
    double widthBox = 0.0;
    double heightBox = 0.0;
    QString title;
    int lowerLink = 0;
    int upperLink = 0;
};

// A random edit of both; says which.
QString EditBoth(QRandomGenerator& random, const Host& host, Arithmetic& arithmetic)
{
    static const double extremes[] = {0.0, 0.01, 0.5, 1.0, 99.99, 100.0, 10000.0, 99999.99, 100000.0};
    const bool extreme = random.bounded(8) == 0;
    const double value = extreme
        ? extremes[random.bounded(9)]
        : random.bounded(1 << random.bounded(1, 26)) / (random.bounded(3) ? 100.0 : 1.0);
    const auto edit = [&host](const char* what, double number)
    {
        const QString text = QString("%1=%2").arg(what).arg(number, 0, 'g', 17);
        host.Edit(text);
        return text;
    };
    switch (random.bounded(16))
    {
    case 0:
        host.Edit("reset");
        arithmetic.Reset();
        return "reset";
    case 1:
    case 2:
        arithmetic.Keep(value > 10.0);
        return edit("keep", value > 10.0);
    case 3:
        arithmetic.resample = value > 1.0;
        return edit("resample", value > 1.0);
    case 4:
    case 5:
    case 6:
    {
        const int unit = random.bounded(7);
        arithmetic.SetUnit(unit);
        if (random.bounded(2))
            host.heightUnits->setCurrentIndex(unit);
        else
            host.widthUnits->setCurrentIndex(unit);
        return QString("unit=%1").arg(unit);
    }
    case 7:
    case 8:
    case 9:
    {
        const double dpi = extreme ? value : random.bounded(1000, 3200001) / 1000.0;
        arithmetic.Dpi(dpi);
        return edit("dpi", dpi);
    }
    case 10:
    case 11:
    case 12:
        arithmetic.Width(value);
        return edit("w", value);
    default:
        arithmetic.Height(value);
        return edit("h", value);
    }
}

// The limits once more, in the words of somebody who has never seen the other.
QRectF LimitsByHand(bool keep, int unit, double dpi, int w, int h)
{
    static const double factors[] = {1.0, 25.4, 2.54, 72.0, 6.0};
    const double side[2] = {double(std::max(w, 1)), double(std::max(h, 1))};
    double smallest[2] = {1.0, 1.0};
    double largest[2] = {10000.0, 10000.0};
    const double ratio = side[0] / side[1];
    if (keep && ratio >= 1.0)
    {
        smallest[0] = ratio;
        largest[1] = 10000.0 / ratio;
    }
    else if (keep)
    {
        smallest[1] = 1.0 / ratio;
        largest[0] = ratio * 10000.0;
    }
    const auto whole = [](double x) { return std::floor(x) == x; };
    if (unit == Pixels)
    {
        const auto up = [&whole](double x)
        { return whole(x) ? x : std::max(1.0, std::min(10000.0, std::floor(x) + 1.0)); };
        smallest[0] = up(smallest[0]);
        smallest[1] = up(smallest[1]);
        largest[0] = up(largest[0]);
    }
    for (int i = 0; i < 2 && unit != Pixels; ++i)
    {
        const bool percent = unit == Percent;
        const double factor = percent ? 0.0 : factors[unit - Inches];
        const double low = percent ? smallest[i] / side[i] * 10000.0 : smallest[i] * factor / dpi * 100.0;
        const double high = percent ? largest[i] / side[i] * 10000.0 : largest[i] * factor / dpi * 100.0;
        smallest[i] = std::floor((whole(low) ? low : std::floor(low) + 1.0) + 0.5) / 100.0;
        largest[i] = std::floor(percent ? high + 0.5 : high) / 100.0;
    }
    return QRectF(smallest[0], smallest[1], largest[0] - smallest[0], largest[1] - smallest[1]);
}

} // namespace

class tst_NVImageSize : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void formIsAsStated_data();
    void formIsAsStated();
    void formReadsFromTopToBottom();
    void unitListsAreFilled();
    void tabOrderIsAsStated();
    void captionsLeadToTheirBoxes();
    void textsAreTranslatedUnderTheirNames();
    void messagesAreTranslated_data();
    void messagesAreTranslated();
    void keysStartInTheWidth();
    void interfaceIsAsHostsKnowIt();
    void sizeIsFixedAndFollowsTheTitle();
    void longNumbersAreNotCutOff_data();
    void longNumbersAreNotCutOff();
    void longNumbersOfPixelsAreNotCutOff();
    void picturesAreThoseOfTheDenseScreen();

    void startsWithWhatItIsGiven();
    void sectionShowsNewOrCurrentSize();
    void resolutionIsClampedButKept_data();
    void resolutionIsClampedButKept();
    void resampleAndMethodAreReported();

    void editsGiveTheseFields_data();
    void editsGiveTheseFields();
    void unitsMoveTogetherWithOrWithoutShift_data();
    void unitsMoveTogetherWithOrWithoutShift();
    void decimalsFollowTheUnit();
    void percentHoldsOneNumberWhileConstrained();
    void typingWidthKeyByKey();
    void typingLengthKeyByKey();
    void typingResolutionKeyByKeyLosesPixels();
    void resolutionBelowItsLeastGoesBack();
    void sameValueAgainChangesNothing();
    void eachBoxTellsOnceAnEdit();
    void constraintPictures_data();
    void constraintPictures();
    void constraintDropsEdits();
    void titleTellsMemory_data();
    void titleTellsMemory();
    void titleComparesWidthsOnly();
    void memoryTextTurnsAtPowersOf1024_data();
    void memoryTextTurnsAtPowersOf1024();
    void resetGoesBackToTheStart();
    void randomEditsFollowTheArithmetic_data();
    void randomEditsFollowTheArithmetic();

    void okAcceptsWhatADocumentMayHave_data();
    void okAcceptsWhatADocumentMayHave();
    void enterInABoxAccepts();
    void cancelKeepsWhatWasTyped();
    void escapeAndCloseAreNeitherOkNorCancel();
    void messageTellsTheRanges_data();
    void messageTellsTheRanges();
    void messageStandsOverTheMainWindow();
    void zeroIsRefused();
    void rangesAreThoseWorkedOutByHand();

    void sizesOfNoImageAreHarmless();
    void extremeNumbersFollowTheArithmetic();
    void diesInMidEdit_data();
    void diesInMidEdit();
    void diesUnderItsMessage_data();
    void diesUnderItsMessage();
};

void tst_NVImageSize::initTestCase()
{
    QLocale::setDefault(QLocale::c());
    QCOMPARE(NVMeasureUnit::StandardUnits().size(), int(Picas) - 1);
}

using Facts = QList<QPair<QByteArray, QVariant>>;
Q_DECLARE_METATYPE(Facts)

void tst_NVImageSize::formIsAsStated_data()
{
    const int right = int(Qt::AlignRight | Qt::AlignVCenter);
    const Facts box = {{"minimum", 0.0},     {"maximum", 100000.0}, {"decimals", 0},
                       {"minimumWidth", 70}, {"maximumWidth", 70},  {"singleStep", 1.0}};
    QTest::addColumn<QByteArray>("className");
    QTest::addColumn<Facts>("facts");
    const auto row = [](const char* name, const char* className, const Facts& facts)
    { QTest::newRow(name) << QByteArray(className) << facts; };

    row("m_pDocumentSizeGroup", "QGroupBox", {{"title", "Document size:"}});
    row("label_13", "QLabel", {{"text", "Width:"}, {"alignment", right}});
    row("m_pNewWidth", "QDoubleSpinBox", box);
    row("m_pWidthUnits", "KXCommonComboBox", {{"minimumWidth", 80}, {"currentIndex", 0}});
    row("m_pConstrainProportions", "QLabel",
        {{"text", ""}, {"minimumWidth", 46}, {"maximumWidth", 46}, {"minimumHeight", 72}});
    row("label_12", "QLabel", {{"text", "Height:"}, {"alignment", right}});
    row("m_pNewHeight", "QDoubleSpinBox", box);
    row("m_pHeightUnits", "KXCommonComboBox", {{"minimumWidth", 80}, {"currentIndex", 0}});
    row("label_14", "QLabel", {{"text", "Resolution:"}, {"minimumWidth", 60}});
    row("m_pResolution", "QDoubleSpinBox",
        {{"minimum", 1.0},
         {"maximum", 3200.0},
         {"decimals", 3},
         {"correctionMode", int(QAbstractSpinBox::CorrectToPreviousValue)}});
    row("comboBox_2", "QComboBox", {{"enabled", false}, {"count", 1}, {"currentText", "pixels/inch"}});
    row("m_pDimensionGroup", "QGroupBox", {{"title", "Pixel dimensions: 1.9 Mb"}});
    row("m_pPixelWidthLbl", "QLabel", {{"text", "Width:"}});
    row("m_pPixelHeightLbl", "QLabel", {{"text", "Height:"}});
    for (const char* name : {"m_pPixelWidth", "m_pPixelHeight"})
    {
        const bool selectable = qstrcmp(name, "m_pPixelHeight") == 0;
        row(name, "QLabel",
            {{"text", selectable ? "500" : "1000"},
             {"minimumWidth", 70},
             {"maximumWidth", 70},
             {"alignment", right},
             {"textInteractionFlags",
              int(selectable ? Qt::LinksAccessibleByMouse | Qt::TextSelectableByMouse
                             : Qt::TextInteractionFlags(Qt::LinksAccessibleByMouse))}});
    }
    row("m_pCurrPixWidth", "QLabel", {{"text", "1000"}});
    row("m_pCurrPixHeight", "QLabel", {{"text", "500"}});
    row("m_pPixelWidthUnitLbl", "QLabel", {{"text", "pixels"}});
    row("m_pPixelHeightUnitLbl", "QLabel", {{"text", "pixels"}});
    row("m_pConstrainDimensions", "QLabel",
        {{"text", ""}, {"minimumWidth", 46}, {"maximumWidth", 46}, {"minimumHeight", 46}});
    row("m_pConstrain", "QCheckBox",
        {{"text", "Constrain proportions"}, {"checked", true}, {"enabled", true}});
    row("m_pResample", "QCheckBox", {{"text", "Resample image:"}, {"checked", true}, {"enabled", false}});
    row("m_pResampleMethod", "KXCommonComboBox",
        {{"currentIndex", 2}, {"currentText", "Bicubic"}, {"count", 3}, {"enabled", true}});
    row("m_pButtonBox", "QDialogButtonBox",
        {{"standardButtons",
          int(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Reset)}});
}

void tst_NVImageSize::formIsAsStated()
{
    QFETCH(QByteArray, className);
    QFETCH(Facts, facts);
    const Host host;

    const auto* widget = host.Find<QWidget>(QTest::currentDataTag());

    QCOMPARE(QByteArray(widget->metaObject()->className()), className);
    for (const auto& fact : facts)
    {
        QVariant value = widget->property(fact.first);
        if (value.userType() != fact.second.userType())
            QVERIFY2(value.convert(fact.second.userType()), fact.first);
        QVERIFY2(value == fact.second, qPrintable(fact.first + ": " + value.toString()));
    }
}

void tst_NVImageSize::formReadsFromTopToBottom()
{
    const Host host;
    QVERIFY(host.Show());
    QCOMPARE(host.dialog->windowTitle(), QString("Image Size"));
    const auto place = [&host](const char* name)
    {
        const auto* widget = host.Find<QWidget>(name);
        return QRect(widget->mapTo(host.dialog, QPoint()), widget->size());
    };

    int bottom = -1;
    for (const char* name : {"m_pNewWidth", "m_pNewHeight", "m_pResolution", "m_pPixelWidth",
                             "m_pPixelHeight", "m_pConstrain", "m_pResample", "m_pButtonBox"})
    {
        QVERIFY2(place(name).top() > bottom, name);
        bottom = place(name).bottom();
    }

    const QRect upper = place("m_pConstrainProportions");
    QVERIFY(upper.top() <= place("m_pNewWidth").top() && upper.bottom() >= place("m_pResolution").bottom());
    QVERIFY(upper.left() > place("m_pWidthUnits").right());
    const QRect lower = place("m_pConstrainDimensions");
    QVERIFY(lower.top() <= place("m_pPixelWidth").top() &&
            lower.bottom() >= place("m_pPixelHeight").bottom());
    QCOMPARE(host.Find<QWidget>("m_pNewWidth")->parentWidget()->objectName(),
             QString("m_pDocumentSizeGroup"));
    QCOMPARE(host.Find<QWidget>("m_pPixelWidth")->parentWidget()->objectName(), QString("m_pDimensionGroup"));
}

void tst_NVImageSize::unitListsAreFilled()
{
    const Host host;

    for (const QComboBox* combo : {host.widthUnits, host.heightUnits})
    {
        QStringList texts;
        for (int i = 0; i < combo->count(); ++i)
            texts << combo->itemText(i);
        QCOMPARE(texts, QStringList({"px", "percent", "in", "mm", "cm", "pt", "pc"}));
    }
    const auto* method = host.Find<QComboBox>("m_pResampleMethod");
    QCOMPARE(method->itemText(0), QString("Nearest Neighbor"));
    QCOMPARE(method->itemText(1), QString("Bilinear"));
    QCOMPARE(method->itemText(2), QString("Bicubic"));
}

void tst_NVImageSize::tabOrderIsAsStated()
{
    const Host host;
    const QStringList expected = {"m_pNewWidth",   "m_pNewHeight",   "m_pResolution",
                                  "m_pWidthUnits", "m_pHeightUnits", "comboBox_2",
                                  "m_pConstrain",  "m_pResample",    "m_pResampleMethod"};
    QStringList order;
    QWidget* widget = host.width;
    do
    {
        if (expected.contains(widget->objectName()))
            order << widget->objectName();
        widget = widget->nextInFocusChain();
    } while (widget != host.width);
    QCOMPARE(order, expected);

    // By keys, past what is disabled.
    QVERIFY(host.Show());
    host.width->setFocus();
    for (const char* name : {"m_pNewHeight", "m_pResolution", "m_pWidthUnits", "m_pHeightUnits",
                             "m_pConstrain", "m_pResampleMethod"})
    {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget()->objectName(), QString(name));
    }
}

void tst_NVImageSize::captionsLeadToTheirBoxes()
{
    const Host host;

    QCOMPARE(host.Find<QLabel>("label_13")->buddy(), host.width);
    QCOMPARE(host.Find<QLabel>("label_12")->buddy(), host.height);
    QCOMPARE(host.Find<QLabel>("label_14")->buddy(), host.resolution);
    for (const char* name : {"m_pWidthUnits", "m_pHeightUnits", "comboBox_2", "m_pResampleMethod"})
        QVERIFY2(!host.Find<QWidget>(name)->accessibleName().isEmpty(), name);
}

void tst_NVImageSize::textsAreTranslatedUnderTheirNames()
{
    const Shouting translator;
    const Host host;

    QCOMPARE(host.dialog->windowTitle(), QString("IMAGE SIZE"));
    QCOMPARE(host.Find<QGroupBox>("m_pDocumentSizeGroup")->title(), QString("DOCUMENT SIZE:"));
    for (const char* name : {"label_12", "label_13", "label_14", "m_pPixelWidthLbl", "m_pPixelHeightLbl",
                             "m_pPixelWidthUnitLbl", "m_pPixelHeightUnitLbl"})
    {
        const QString text = host.LabelText(name);
        QVERIFY2(!text.isEmpty() && text == text.toUpper(), name);
    }
    QCOMPARE(host.constrain->text(), QString("CONSTRAIN PROPORTIONS"));
    QCOMPARE(host.resample->text(), QString("RESAMPLE IMAGE:"));
    QCOMPARE(host.Find<QComboBox>("comboBox_2")->currentText(), QString("PIXELS/INCH"));
    QCOMPARE(host.Find<QComboBox>("m_pResampleMethod")->itemText(0), QString("NEAREST NEIGHBOR"));
    QCOMPARE(host.widthUnits->itemText(0), QString("<px>"));
    QCOMPARE(host.heightUnits->itemText(1), QString("<percent>"));
    QCOMPARE(host.heightUnits->itemText(3), QString("MM"));
    QCOMPARE(host.Title(), QString("<Pixel dimensions: <1.9 Mb>>"));
    host.Edit("w=8");
    QCOMPARE(host.Title(), QString("<Pixel dimensions: <128 b> (was <1.9 Mb>)>"));
}

void tst_NVImageSize::messagesAreTranslated_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("end");
    const QString plain = "<Cannot resize the image. Maximum dimension exceeded.\nThe width ";
    const QString atDpi =
        "<Cannot resize the image. Maximum dimension exceeded for the DPI value.\nThe width ";
    QTest::newRow("pixels") << int(Pixels) << plain << " pixels.>";
    QTest::newRow("percent") << int(Percent) << plain << " percents.>";
    QTest::newRow("inches") << int(Inches) << atDpi << " inches.>";
    QTest::newRow("millimetres") << int(Millimetres) << atDpi << " millimeters.>";
}

void tst_NVImageSize::messagesAreTranslated()
{
    QFETCH(int, unit);
    QFETCH(QString, start);
    QFETCH(QString, end);
    const Shouting translator;
    const Host host;
    host.widthUnits->setCurrentIndex(unit);
    host.width->setValue(100000.0);
    ModalDriver driver({[](QWidget* dialog) { ModalDriver::PressKey(dialog, Qt::Key_Return); },
                        [&](QWidget* window)
                        {
                            const auto* box = qobject_cast<KXMessageBox*>(window);
                            QVERIFY(box);
                            QCOMPARE(box->windowTitle(), QString("<Operation error>"));
                            QVERIFY2(box->GetText().startsWith(start), qPrintable(box->GetText()));
                            QVERIFY2(box->GetText().endsWith(end), qPrintable(box->GetText()));
                            ModalDriver::PressKey(window, Qt::Key_Return);
                            ModalDriver::PressKey(host.dialog, Qt::Key_Escape);
                        }});

    host.dialog->Exec();

    QVERIFY(driver.Finished());
}

void tst_NVImageSize::keysStartInTheWidth()
{
    const Host host(QSize(1000, 500));
    QVERIFY(host.Show());
    QVERIFY(host.width->hasFocus());

    QTest::keyClicks(QApplication::focusWidget(), "40");

    QCOMPARE(host.dialog->GetNewSize(), QSize(40, 20));
}

void tst_NVImageSize::interfaceIsAsHostsKnowIt()
{
    const QMetaObject& meta = NVImageSize::staticMetaObject;
    QStringList slots_;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
    {
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Slot);
        QCOMPARE(meta.method(i).access(), QMetaMethod::Private);
        slots_ << QString::fromLatin1(meta.method(i).methodSignature());
    }

    QCOMPARE(
        slots_,
        QStringList({"OnContrainProportions(bool)", "OnWidthUnitChanged(int)", "OnHeightUnitChanged(int)",
                     "OnNewWidthChanged(double)", "OnNewHeightChanged(double)", "OnReset()",
                     "OnResolutionChanged(double)", "OnAccepting()"}));
    QCOMPARE(meta.superClass(), &KXDialog::staticMetaObject);
    QCOMPARE(int(KXDocumentInterface::MAX_DOC_DIMENSION), 10000);
}

void tst_NVImageSize::sizeIsFixedAndFollowsTheTitle()
{
    const Host host;
    QCOMPARE(host.dialog->layout()->sizeConstraint(), QLayout::SetFixedSize);
    QVERIFY(host.Show());
    QCOMPARE(host.dialog->size(), host.dialog->sizeHint());
    QCOMPARE(host.dialog->minimumSize(), host.dialog->maximumSize());

    host.dialog->resize(2000, 2000);
    QCOMPARE(host.dialog->size(), host.dialog->sizeHint());

    // Nothing of the longest texts is cut off.
    host.Edits("w=99999");
    QTRY_COMPARE(host.dialog->size(), host.dialog->sizeHint());
    const auto* group = host.Find<QGroupBox>("m_pDimensionGroup");
    QVERIFY(group->width() >= group->fontMetrics().horizontalAdvance(group->title()));
    for (const char* name : {"label_12", "label_13", "label_14", "m_pPixelWidth", "m_pPixelHeightUnitLbl"})
    {
        const auto* label = host.Find<QLabel>(name);
        QVERIFY2(label->width() >= label->fontMetrics().horizontalAdvance(label->text()), name);
    }
}

void tst_NVImageSize::longNumbersAreNotCutOff_data()
{
    QTest::addColumn<int>("points");
    QTest::addColumn<int>("unit");
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    for (const int points : {9, 12, 16})
    {
        const auto row = [points](int unit, double value, const char* text)
        { QTest::addRow("%s in %d pt", text, points) << points << unit << value << QString(text); };
        row(Percent, 150.0, "150.00");
        row(Pixels, 10000.0, "10000");
        row(Pixels, 100000.0, "100000");
        row(Millimetres, 3527.78, "3527.78");
        row(Percent, 100000.0, "100000.00");
    }
}

void tst_NVImageSize::longNumbersAreNotCutOff()
{
    QFETCH(int, points);
    QFETCH(int, unit);
    QFETCH(double, value);
    QFETCH(QString, text);
    const FontSize larger(points);
    const Host host(QSize(1000, 1000));
    QVERIFY(host.Show());

    host.Edit("keep=0");
    host.widthUnits->setCurrentIndex(unit);
    host.width->setValue(value);
    host.height->setValue(value);

    for (const QDoubleSpinBox* box : {host.width, host.height})
    {
        QCOMPARE(box->width(), 70);
        QCOMPARE(box->text(), text);
        QVERIFY(box->rect().contains(box->findChild<QLineEdit*>()->geometry()));
        QVERIFY(box->findChild<QLineEdit*>()->font().pointSizeF() >= 6.0);
    }
    host.resolution->setValue(3200.0);
    QTRY_COMPARE(CutText(host.dialog), QString());
}

void tst_NVImageSize::longNumbersOfPixelsAreNotCutOff()
{
    const FontSize larger(12);
    const Host host(QSize(10000, 10000));
    QVERIFY(host.Show());

    host.Edits("unit=1, w=100000");

    for (const char* name : {"m_pPixelWidth", "m_pPixelHeight"})
    {
        const auto* label = host.Find<QLabel>(name);
        QCOMPARE(label->text(), QString("10000000"));
        QCOMPARE(label->width(), 70);
        QVERIFY(label->font().pointSizeF() >= 6.0);
    }
    QTRY_COMPARE(CutText(host.dialog), QString());
    host.Edits("w=100");
    QCOMPARE(host.Find<QLabel>("m_pPixelWidth")->font().pointSizeF(), 12.0);
}

void tst_NVImageSize::picturesAreThoseOfTheDenseScreen()
{
    if (!IsOnDenseScreen())
        return;
    const Host host;

    const QPixmap upper = host.Find<QLabel>("m_pConstrainProportions")->pixmap(Qt::ReturnByValue);
    QCOMPARE(upper.devicePixelRatio(), 2.0);
    QCOMPARE(upper.size(), QSize(92, 144));
    QCOMPARE(upper.toImage(), QPixmap("theme:image_size_dialog_link2@2x.png").toImage());
    const QPixmap lower = host.Find<QLabel>("m_pConstrainDimensions")->pixmap(Qt::ReturnByValue);
    QCOMPARE(lower.toImage(), QPixmap("theme:image_size_dialog_link1@2x.png").toImage());
}

void tst_NVImageSize::startsWithWhatItIsGiven()
{
    const Host host(QSize(800, 600), 96.5);

    QCOMPARE(host.Fields(),
             QString("800x600, boxes 800 and 600, labels 800 and 600, Pixel dimensions: 1.8 Mb, dpi 96.500, "
                     "units 0 and 0, keep 1, links 1 and 2"));
    QCOMPARE(host.LabelText("m_pCurrPixWidth"), QString("800"));
    QCOMPARE(host.LabelText("m_pCurrPixHeight"), QString("600"));
    QCOMPARE(host.dialog->GetNewSize(), QSize(800, 600));
    QCOMPARE(host.dialog->GetDPI(), 96.5);
    QVERIFY(host.dialog->IsResample());
    QCOMPARE(host.dialog->GetResampleMode(), 2);
    QCOMPARE(host.dialog->GetResult(), int(KXDialog::ResultClosed));

    // The present size is never changed.
    host.Edits("w=17, unit=2, dpi=300, reset, h=9");
    QCOMPARE(host.LabelText("m_pCurrPixWidth"), QString("800"));
    QCOMPARE(host.LabelText("m_pCurrPixHeight"), QString("600"));
}

void tst_NVImageSize::sectionShowsNewOrCurrentSize()
{
    const Host host;
    const auto hidden = [&host](const char* name) { return host.Find<QLabel>(name)->isHidden(); };
    const auto shows = [&hidden](bool newSize)
    {
        return hidden("m_pPixelWidth") != newSize && hidden("m_pPixelHeight") != newSize &&
            hidden("m_pCurrPixWidth") == newSize && hidden("m_pCurrPixHeight") == newSize;
    };
    QVERIFY(shows(true));

    host.dialog->HideCurrDimensionSection(false);
    QVERIFY(shows(false));
    host.dialog->HideCurrDimensionSection(false);
    QVERIFY(shows(false));
    host.dialog->HideCurrDimensionSection(true);
    QVERIFY(shows(true));
}

void tst_NVImageSize::resolutionIsClampedButKept_data()
{
    QTest::addColumn<double>("dpi");
    QTest::addColumn<double>("shown");
    QTest::newRow("usual") << 300.0 << 300.0;
    QTest::newRow("three decimals") << 72.0094 << 72.009;
    QTest::newRow("largest") << 3200.0 << 3200.0;
    QTest::newRow("above the largest") << 4800.0 << 3200.0;
    QTest::newRow("below the smallest") << 0.5 << 1.0;
    QTest::newRow("none") << 0.0 << 1.0;
    QTest::newRow("negative") << -72.0 << 1.0;
    QTest::newRow("infinite") << Infinity << 3200.0;
    QTest::newRow("negative infinite") << -Infinity << 1.0;
}

void tst_NVImageSize::resolutionIsClampedButKept()
{
    QFETCH(double, dpi);
    QFETCH(double, shown);
    const Host host(QSize(100, 100), dpi);
    QCOMPARE(host.dialog->GetDPI(), shown);
    QCOMPARE(host.resolution->value(), shown);

    // Reset clamps the same number once more.
    host.Edit("dpi=50");
    QCOMPARE(host.dialog->GetDPI(), 50.0);
    host.Edit("reset");
    QCOMPARE(host.dialog->GetDPI(), shown);
}

void tst_NVImageSize::resampleAndMethodAreReported()
{
    const Host host;
    auto* method = host.Find<QComboBox>("m_pResampleMethod");
    QVERIFY(host.Show());

    for (int i = 0; i < 3; ++i)
    {
        method->setCurrentIndex(i);
        QCOMPARE(host.dialog->GetResampleMode(), i);
    }

    // Neither a click nor any edit frees the box.
    QTest::mouseClick(host.resample, Qt::LeftButton, Qt::NoModifier, QPoint(8, host.resample->height() / 2));
    host.Edits("w=10, unit=1, keep=0, dpi=20, keep=1, reset");
    QVERIFY(!host.resample->isEnabled());
    QVERIFY(host.dialog->IsResample());
    QVERIFY(method->isEnabled());
}

void tst_NVImageSize::editsGiveTheseFields_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QString>("edits");
    QTest::addColumn<QString>("sizes");
    // At 72 pixels an inch unless the edits say otherwise.
    const auto rows = [](const char* name, const QSize& size, const QList<QPair<QString, QString>>& list)
    {
        for (const auto& entry : list)
            QTest::newRow(qPrintable(QString("%1: %2").arg(name, entry.first)))
                << size << entry.first << entry.second;
    };
    rows("landscape", QSize(1000, 500),
         {{"", "1000x500, boxes 1000 and 500"},
          {"w=333", "333x167, boxes 333 and 167"},
          {"h=167", "334x167, boxes 334 and 167"},
          {"w=333, h=167", "333x167, boxes 333 and 167"},
          {"h=167, w=333", "333x167, boxes 333 and 167"},
          {"w=1", "1x1, boxes 1 and 1"},
          {"h=1", "2x1, boxes 2 and 1"},
          {"w=0", "0x0, boxes 0 and 0"},
          {"w=100000", "100000x50000, boxes 100000 and 50000"},
          // The height box keeps its limit, the pixels do not.
          {"h=100000", "200000x100000, boxes 100000 and 100000"},
          {"keep=0, w=333", "333x500, boxes 333 and 500"},
          {"keep=0, h=9", "1000x9, boxes 1000 and 9"},
          {"keep=0, w=333, h=9, keep=1", "1000x500, boxes 1000 and 500"},
          {"w=333, keep=0", "333x167, boxes 333 and 167"},
          {"unit=1", "1000x500, boxes 100.00 and 100.00"},
          {"unit=1, w=33.33", "333x167, boxes 33.33 and 33.33"},
          {"unit=1, h=33.33", "334x167, boxes 33.33 and 33.33"},
          // In pixels the typed percentage is lost, and the height copies the width's.
          {"unit=1, w=33.33, unit=0", "333x167, boxes 333 and 167"},
          {"unit=1, w=33.33, unit=0, unit=1", "333x167, boxes 33.30 and 33.30"},
          {"unit=1, h=33.33, unit=0, unit=1", "334x167, boxes 33.40 and 33.40"},
          {"unit=1, keep=0, w=33.33", "333x500, boxes 33.33 and 100.00"},
          {"unit=1, keep=0, w=33.33, h=66.66", "333x333, boxes 33.33 and 66.66"},
          {"unit=1, keep=0, w=33.33, h=66.66, unit=0, unit=1", "333x333, boxes 33.30 and 66.60"},
          {"unit=1, w=0.05", "1x1, boxes 0.05 and 0.05"},
          {"unit=1, w=0.04", "0x0, boxes 0.04 and 0.04"},
          {"unit=2", "1000x500, boxes 13.89 and 6.94"},
          {"unit=2, w=5", "360x180, boxes 5.00 and 2.50"},
          // 360.72 pixels
          {"unit=2, w=5.01", "360x180, boxes 5.01 and 2.50"},
          // 180.72 pixels
          {"unit=2, h=2.51", "360x180, boxes 5.00 and 2.51"},
          // 361.44 pixels, whose half is rounded
          {"unit=2, w=5.02", "361x181, boxes 5.02 and 2.51"},
          {"unit=2, keep=0, w=5", "360x500, boxes 5.00 and 6.94"},
          {"unit=2, keep=0, h=5", "1000x360, boxes 13.89 and 5.00"},
          {"unit=2, w=5.01, unit=0", "360x180, boxes 360 and 180"},
          {"unit=2, w=5.01, unit=0, unit=2", "360x180, boxes 5.00 and 2.50"},
          {"unit=3", "1000x500, boxes 352.78 and 176.39"},
          {"unit=3, w=100", "283x142, boxes 100.00 and 50.09"},
          {"unit=3, h=100", "566x283, boxes 199.67 and 100.00"},
          {"unit=4", "1000x500, boxes 35.28 and 17.64"},
          {"unit=4, w=10", "283x142, boxes 10.00 and 5.01"},
          {"unit=5", "1000x500, boxes 1000.00 and 500.00"},
          {"unit=5, w=99.99", "99x50, boxes 99.99 and 50.00"},
          {"unit=6", "1000x500, boxes 83.33 and 41.67"},
          {"unit=6, w=10", "120x60, boxes 10.00 and 5.00"},
          // Another resolution counts with lengths only.
          {"dpi=300", "1000x500, boxes 1000 and 500"},
          {"unit=1, w=50, dpi=300", "500x250, boxes 50.00 and 50.00"},
          // 13.89 and 6.94 inches make 1389 and 694 pixels, and the height's last word 1388.
          {"unit=2, dpi=100", "1388x694, boxes 13.88 and 6.94"},
          {"unit=2, keep=0, dpi=144", "2000x999, boxes 13.89 and 6.94"},
          {"unit=2, dpi=144", "1998x999, boxes 13.88 and 6.94"},
          {"unit=3, dpi=144", "2000x1000, boxes 352.78 and 176.39"},
          {"dpi=100, unit=2", "1000x500, boxes 10.00 and 5.00"},
          {"dpi=100, unit=2, dpi=72", "720x360, boxes 10.00 and 5.00"},
          {"unit=2, dpi=1", "12x6, boxes 12.00 and 6.00"},
          // A resolution there and back is not a way back.
          {"unit=2, dpi=1, dpi=72", "864x432, boxes 12.00 and 6.00"},
          {"w=333, unit=1, keep=0, dpi=9, reset", "1000x500, boxes 1000 and 500"}});
    rows("portrait", QSize(500, 1000),
         {{"w=333", "333x666, boxes 333 and 666"},
          {"h=333", "167x333, boxes 167 and 333"},
          {"h=333, w=167", "167x333, boxes 167 and 333"},
          {"w=167, h=333", "167x333, boxes 167 and 333"},
          {"unit=1, h=33.33", "167x333, boxes 33.33 and 33.33"},
          {"unit=1, w=33.33", "167x334, boxes 33.33 and 33.33"},
          {"unit=1, h=33.33, unit=0, unit=1", "167x333, boxes 33.40 and 33.40"},
          {"unit=2, dpi=100", "694x1389, boxes 6.94 and 13.89"},
          {"unit=3, w=100", "283x566, boxes 100.00 and 199.67"}});
    rows("three to four", QSize(600, 800),
         {{"w=100", "100x133, boxes 100 and 133"},
          {"h=100", "75x100, boxes 75 and 100"},
          {"w=101", "101x135, boxes 101 and 135"},
          {"unit=1, w=12.5", "75x100, boxes 12.50 and 12.50"}});
    rows("square", QSize(256, 256),
         {{"w=100", "100x100, boxes 100 and 100"},
          {"h=100", "100x100, boxes 100 and 100"},
          {"unit=1, w=12.5", "32x32, boxes 12.50 and 12.50"},
          {"unit=1, w=12.6", "32x32, boxes 12.60 and 12.60"},
          {"unit=2, w=1.01", "72x72, boxes 1.01 and 1.00"},
          {"unit=2, dpi=300", "1068x1068, boxes 3.56 and 3.56"}});
    rows("one pixel", QSize(1, 1),
         {{"w=7", "7x7, boxes 7 and 7"},
          {"w=0", "0x0, boxes 0 and 0"},
          {"unit=1, w=250", "3x3, boxes 250.00 and 250.00"},
          {"unit=1, w=250, unit=0, unit=1", "3x3, boxes 300.00 and 300.00"},
          {"unit=1, w=49.99", "0x0, boxes 49.99 and 49.99"},
          {"unit=1, w=50", "1x1, boxes 50.00 and 50.00"},
          {"unit=1, w=0.01", "0x0, boxes 0.01 and 0.01"},
          {"unit=2", "1x1, boxes 0.01 and 0.01"},
          {"unit=2, w=0.02", "1x1, boxes 0.02 and 0.01"},
          {"unit=2, w=0.03", "2x2, boxes 0.03 and 0.03"},
          {"unit=2, w=0.02, w=0.01", "0x0, boxes 0.01 and 0.01"},
          // 0.01 inch at any lower resolution is nothing.
          {"unit=2, dpi=71", "0x0, boxes 0.01 and 0.01"},
          {"unit=2, dpi=3200", "32x32, boxes 0.01 and 0.01"}});
    rows("largest", QSize(10000, 10000),
         {{"w=9999", "9999x9999, boxes 9999 and 9999"},
          {"w=20000", "20000x20000, boxes 20000 and 20000"},
          {"unit=1, w=0.01", "1x1, boxes 0.01 and 0.01"},
          {"unit=1, h=100000", "10000000x10000000, boxes 100000.00 and 100000.00"},
          {"unit=2", "10000x10000, boxes 138.89 and 138.89"},
          {"dpi=3200, unit=2, h=100000", "320000000x320000000, boxes 100000.00 and 100000.00"}});
    rows("narrowest", QSize(1, 10000),
         {{"w=2", "2x20000, boxes 2 and 20000"},
          {"h=5000", "1x5000, boxes 1 and 5000"},
          {"h=4999", "0x4999, boxes 0 and 4999"},
          {"unit=1, h=50", "1x5000, boxes 50.00 and 50.00"},
          {"unit=1, w=50", "1x10000, boxes 50.00 and 50.00"},
          {"unit=1, w=50, unit=0, unit=1", "1x10000, boxes 100.00 and 100.00"},
          {"unit=2", "1x10000, boxes 0.01 and 138.89"},
          // 0.01 inch is no pixel, 138.89 inches are 10000.08.
          {"unit=2, dpi=72.001", "1x10000, boxes 0.01 and 138.89"},
          {"unit=2, dpi=71", "0x9861, boxes 0.01 and 138.89"},
          // Beyond what an int holds: the nearest that it does.
          {"dpi=3200, unit=2, w=100000", "320000000x2147483647, boxes 100000.00 and 100000.00"}});
    rows("flattest", QSize(10000, 1),
         {{"w=5000", "5000x1, boxes 5000 and 1"},
          {"w=4999", "4999x0, boxes 4999 and 0"},
          {"h=2", "20000x2, boxes 20000 and 2"},
          {"unit=1, h=50", "10000x1, boxes 50.00 and 50.00"}});
}

void tst_NVImageSize::editsGiveTheseFields()
{
    QFETCH(QSize, size);
    QFETCH(QString, edits);
    QFETCH(QString, sizes);
    const Host host(size);

    host.Edits(edits);

    QCOMPARE(host.Sizes(), sizes);
    QCOMPARE(host.LabelText("m_pPixelWidth"), QString::number(host.dialog->GetNewSize().width()));
    QCOMPARE(host.LabelText("m_pPixelHeight"), QString::number(host.dialog->GetNewSize().height()));
}

void tst_NVImageSize::unitsMoveTogetherWithOrWithoutShift_data()
{
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("no key held") << Qt::KeyboardModifiers(Qt::NoModifier);
    QTest::newRow("Shift held") << Qt::KeyboardModifiers(Qt::ShiftModifier);
}

void tst_NVImageSize::unitsMoveTogetherWithOrWithoutShift()
{
    QFETCH(Qt::KeyboardModifiers, modifiers);
    const Host host;
    QVERIFY(host.Show());
    QSignalSpy widthMoves(host.widthUnits, qOverload<int>(&QComboBox::currentIndexChanged));
    QSignalSpy heightMoves(host.heightUnits, qOverload<int>(&QComboBox::currentIndexChanged));

    for (QComboBox* combo : {host.widthUnits, host.heightUnits})
    {
        combo->setFocus();
        for (int i = 0; i < 3; ++i)
            QTest::keyClick(combo, Qt::Key_Down, modifiers);
        QCOMPARE(host.widthUnits->currentIndex(), host.heightUnits->currentIndex());
    }

    QCOMPARE(host.widthUnits->currentIndex(), int(Picas));
    QCOMPARE(widthMoves.count(), 6);
    QCOMPARE(heightMoves.count(), 6);
    QCOMPARE(host.Sizes(), QString("1000x500, boxes 83.33 and 41.67"));
}

void tst_NVImageSize::decimalsFollowTheUnit()
{
    const Host host;

    for (const int unit : {Percent, Picas, Pixels, Inches, Millimetres, Pixels, Points})
    {
        host.heightUnits->setCurrentIndex(unit);
        QCOMPARE(host.widthUnits->currentIndex(), unit);
        QCOMPARE(host.width->decimals(), unit == Pixels ? 0 : 2);
        QCOMPARE(host.height->decimals(), unit == Pixels ? 0 : 2);
        QCOMPARE(host.width->maximum(), 100000.0);
        QCOMPARE(host.height->minimum(), unit == Pixels ? 0.0 : 0.01);
        QCOMPARE(host.dialog->GetNewSize(), QSize(1000, 500));
    }
}

void tst_NVImageSize::percentHoldsOneNumberWhileConstrained()
{
    const Host host(QSize(997, 613));
    host.Edit("unit=1");
    QRandomGenerator random(3);

    for (int i = 0; i < 2000; ++i)
    {
        QDoubleSpinBox* box = random.bounded(2) ? host.width : host.height;
        box->setValue(random.bounded(1, 100000) / 100.0);
        QCOMPARE(host.width->value(), host.height->value());
        if (i % 50 == 0)
        {
            host.Edits("unit=0, unit=1");
            QCOMPARE(host.width->value(), host.height->value());
        }
    }
}

void tst_NVImageSize::typingWidthKeyByKey()
{
    const Host host;
    QVERIFY(host.Show());
    host.width->setFocus();
    host.width->selectAll();

    QTest::keyClicks(host.width, "3");
    QCOMPARE(host.Sizes(), QString("3x2, boxes 3 and 2"));
    QTest::keyClicks(host.width, "3");
    QCOMPARE(host.Sizes(), QString("33x17, boxes 33 and 17"));
    QTest::keyClicks(host.width, "3");
    QCOMPARE(host.Sizes(), QString("333x167, boxes 333 and 167"));
    QCOMPARE(host.Title(), QString("Pixel dimensions: 217.2 Kb (was 1.9 Mb)"));
    QTest::keyClick(host.width, Qt::Key_Backspace);
    QCOMPARE(host.Sizes(), QString("33x17, boxes 33 and 17"));

    // On to the height: nothing changes by the focus alone.
    QTest::keyClick(host.width, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), host.height);
    QCOMPARE(host.Sizes(), QString("33x17, boxes 33 and 17"));
    QTest::keyClicks(host.height, "25");
    QCOMPARE(host.Sizes(), QString("50x25, boxes 50 and 25"));
    QTest::keyClick(host.height, Qt::Key_Up);
    QCOMPARE(host.Sizes(), QString("52x26, boxes 52 and 26"));

    // Half a number is none: the size stays.
    host.height->selectAll();
    QTest::keyClick(host.height, Qt::Key_Delete);
    QCOMPARE(host.dialog->GetNewSize(), QSize(52, 26));
    QTest::keyClick(host.height, Qt::Key_Tab);
    QCOMPARE(host.Sizes(), QString("52x26, boxes 52 and 26"));
}

void tst_NVImageSize::typingLengthKeyByKey()
{
    const Host host;
    host.Edit("unit=2");
    QVERIFY(host.Show());
    host.width->setFocus();
    host.width->selectAll();
    const QStringList steps = {"360x180, boxes 5 and 2.50", "360x180, boxes 5. and 2.50",
                               "360x180, boxes 5.0 and 2.50", "362x181, boxes 5.04 and 2.51"};

    const QString keys = "5.04";
    for (int i = 0; i < keys.size(); ++i)
    {
        QTest::keyClicks(host.width, keys.mid(i, 1));
        QCOMPARE(host.Sizes(), steps.at(i));
    }
    // A third decimal is not taken.
    QTest::keyClicks(host.width, "9");
    QCOMPARE(host.Sizes(), steps.last());
}

void tst_NVImageSize::typingResolutionKeyByKeyLosesPixels()
{
    const Host host;
    host.Edit("unit=2");
    QVERIFY(host.Show());
    host.resolution->setFocus();
    host.resolution->selectAll();

    QTest::keyClicks(host.resolution, "1");
    QCOMPARE(host.Sizes(), QString("12x6, boxes 12.00 and 6.00"));
    QTest::keyClicks(host.resolution, "0");
    QCOMPARE(host.Sizes(), QString("120x60, boxes 12.00 and 6.00"));
    QTest::keyClicks(host.resolution, "0");
    QCOMPARE(host.Sizes(), QString("1200x600, boxes 12.00 and 6.00"));
    QCOMPARE(host.dialog->GetDPI(), 100.0);
}

void tst_NVImageSize::resolutionBelowItsLeastGoesBack()
{
    const Host host;
    QVERIFY(host.Show());
    host.resolution->setFocus();
    host.resolution->selectAll();

    QTest::keyClicks(host.resolution, "0.5");
    QCOMPARE(host.dialog->GetDPI(), 72.0);
    QTest::keyClick(host.resolution, Qt::Key_Tab);
    QCOMPARE(host.resolution->text(), QString("72.000"));
    QCOMPARE(host.dialog->GetDPI(), 72.0);
}

void tst_NVImageSize::sameValueAgainChangesNothing()
{
    const Host host;
    host.Edits("unit=2, w=5.01");
    const QString before = host.Fields();
    QSignalSpy width(host.width, qOverload<double>(&QDoubleSpinBox::valueChanged));
    QSignalSpy height(host.height, qOverload<double>(&QDoubleSpinBox::valueChanged));

    host.Edits("w=5.01, h=2.5, unit=2, dpi=72, keep=1");
    host.heightUnits->setCurrentIndex(Inches);

    QCOMPARE(host.Fields(), before);
    QCOMPARE(width.count(), 0);
    QCOMPARE(height.count(), 0);
}

void tst_NVImageSize::eachBoxTellsOnceAnEdit()
{
    const Host host;
    QSignalSpy width(host.width, qOverload<double>(&QDoubleSpinBox::valueChanged));
    QSignalSpy height(host.height, qOverload<double>(&QDoubleSpinBox::valueChanged));

    host.Edit("w=333");
    QCOMPARE(width.count(), 1);
    QCOMPARE(height.count(), 1);
    host.Edit("h=10");
    QCOMPARE(width.count(), 2);
    QCOMPARE(height.count(), 2);
    host.Edits("keep=0, w=5");
    QCOMPARE(width.count(), 3);
    QCOMPARE(height.count(), 2);
    // The dialog itself tells nothing of an edit.
    SignalLog log(host.dialog);
    host.Edits("h=7, unit=3, dpi=10, keep=1, reset");
    QCOMPARE(log.Count(), 0);
}

void tst_NVImageSize::constraintPictures_data()
{
    QTest::addColumn<bool>("constrain");
    QTest::addColumn<bool>("resample");
    QTest::addColumn<int>("lower");
    QTest::addColumn<int>("upper");
    QTest::newRow("constrained and resampled") << true << true << 1 << 2;
    QTest::newRow("constrained, not resampled") << true << false << 0 << 3;
    QTest::newRow("free and resampled") << false << true << 0 << 0;
    QTest::newRow("free, not resampled") << false << false << 0 << 3;
}

void tst_NVImageSize::constraintPictures()
{
    QFETCH(bool, constrain);
    QFETCH(bool, resample);
    QFETCH(int, lower);
    QFETCH(int, upper);
    const Host host;
    host.Edit(constrain ? "keep=0" : "keep=1");

    // The box for resampling is tied to nothing: the pictures follow with the next turn of the other one.
    const int lowerBefore = host.Link("m_pConstrainDimensions");
    host.Edit(QString("resample=%1").arg(resample));
    QCOMPARE(host.Link("m_pConstrainDimensions"), lowerBefore);
    host.Edit(QString("keep=%1").arg(constrain));
    QCOMPARE(host.Link("m_pConstrainDimensions"), lower);
    QCOMPARE(host.Link("m_pConstrainProportions"), upper);

    // Reset shows the links whatever the box for resampling says.
    host.Edit("reset");
    QCOMPARE(host.Link("m_pConstrainDimensions"), 1);
    QCOMPARE(host.Link("m_pConstrainProportions"), 2);
    QCOMPARE(host.resample->isChecked(), resample);
}

void tst_NVImageSize::constraintDropsEdits()
{
    const Host host;
    QVERIFY(host.Show());
    const QPoint mark(8, host.constrain->height() / 2);

    host.Edit("w=333");
    QTest::mouseClick(host.constrain, Qt::LeftButton, Qt::NoModifier, mark);
    QVERIFY(!host.constrain->isChecked());
    QCOMPARE(host.Sizes(), QString("333x167, boxes 333 and 167"));

    host.Edits("h=400, unit=2");
    QTest::mouseClick(host.constrain, Qt::LeftButton, Qt::NoModifier, mark);
    QVERIFY(host.constrain->isChecked());
    QCOMPARE(host.Sizes(), QString("1000x500, boxes 13.89 and 6.94"));
    QCOMPARE(host.Title(), QString("Pixel dimensions: 1.9 Mb"));
    // Unit and resolution are none of its business.
    QCOMPARE(host.widthUnits->currentIndex(), int(Inches));
}

void tst_NVImageSize::titleTellsMemory_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QString>("edits");
    QTest::addColumn<QString>("title");
    QTest::newRow("one pixel") << QSize(1, 1) << ""
                               << "4 b";
    QTest::newRow("below a kilobyte") << QSize(255, 1) << ""
                                      << "1020 b";
    QTest::newRow("a kilobyte") << QSize(256, 1) << ""
                                << "1.0 Kb";
    QTest::newRow("largest") << QSize(10000, 10000) << ""
                             << "381.5 Mb";
    QTest::newRow("narrowest") << QSize(1, 10000) << ""
                               << "39.1 Kb";
    QTest::newRow("below a megabyte") << QSize(1, 1) << "keep=0, w=511, h=513"
                                      << "1024.0 Kb (was 4 b)";
    QTest::newRow("a megabyte") << QSize(1, 1) << "w=512"
                                << "1.0 Mb (was 4 b)";
    QTest::newRow("a gigabyte") << QSize(1, 1) << "w=16384"
                                << "1.0 Gb (was 4 b)";
    QTest::newRow("beyond 32 bits") << QSize(10000, 10000) << "w=100000"
                                    << "37.3 Gb (was 381.5 Mb)";
    QTest::newRow("nothing") << QSize(10, 10) << "w=0"
                             << "0 b (was 400 b)";
    QTest::newRow("not resampled") << QSize(10, 10) << "resample=0, w=5"
                                   << "400 b";
    QTest::newRow("there and back") << QSize(10, 10) << "w=5, w=10"
                                    << "400 b";
    QTest::newRow("resolution") << QSize(72, 72) << "unit=2, dpi=144"
                                << "81.0 Kb (was 20.3 Kb)";
}

void tst_NVImageSize::titleTellsMemory()
{
    QFETCH(QSize, size);
    QFETCH(QString, edits);
    QFETCH(QString, title);
    const Host host(size);

    host.Edits(edits);

    QCOMPARE(host.Title(), "Pixel dimensions: " + title);
}

void tst_NVImageSize::titleComparesWidthsOnly()
{
    const Host host;

    host.Edits("keep=0, h=10");
    QCOMPARE(host.dialog->GetNewSize(), QSize(1000, 10));
    QCOMPARE(host.Title(), QString("Pixel dimensions: 1.9 Mb"));
    host.Edit("w=999");
    QCOMPARE(host.Title(), QString("Pixel dimensions: 39.0 Kb (was 1.9 Mb)"));
    host.Edit("w=1000");
    QCOMPARE(host.Title(), QString("Pixel dimensions: 1.9 Mb"));
}

void tst_NVImageSize::memoryTextTurnsAtPowersOf1024_data()
{
    QTest::addColumn<qint64>("size");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << qint64(0) << "0 b";
    QTest::newRow("last in bytes") << qint64(1023) << "1023 b";
    QTest::newRow("first in kilobytes") << qint64(1024) << "1.0 Kb";
    QTest::newRow("tie") << qint64(1024 + 256) << "1.3 Kb";
    QTest::newRow("last in kilobytes") << qint64(1048575) << "1024.0 Kb";
    QTest::newRow("first in megabytes") << qint64(1048576) << "1.0 Mb";
    QTest::newRow("last in megabytes") << qint64(1073741823) << "1024.0 Mb";
    QTest::newRow("first in gigabytes") << qint64(1073741824) << "1.0 Gb";
    QTest::newRow("beyond 32 bits") << qint64(5000000000) << "4.7 Gb";
    QTest::newRow("largest") << std::numeric_limits<qint64>::max() << "8589934592.0 Gb";
    QTest::newRow("negative") << qint64(-4096) << "-4096 b";
}

void tst_NVImageSize::memoryTextTurnsAtPowersOf1024()
{
    QFETCH(qint64, size);
    QFETCH(QString, text);
    const NVImageSize dialog(72.0, QSize(1, 1), nullptr);

    QCOMPARE((dialog.*Revealed(TextTag()))(size), text);
}

void tst_NVImageSize::resetGoesBackToTheStart()
{
    const Host host(QSize(1000, 500), 96.25);
    const QString start = host.Fields();
    auto* method = host.Find<QComboBox>("m_pResampleMethod");
    QVERIFY(host.Show());
    auto* button = host.Button(QDialogButtonBox::Reset);

    for (const char* edits :
         {"w=7", "keep=0, w=7, h=9", "unit=1, h=7", "unit=4, dpi=11", "keep=0, unit=2, dpi=5", "", "keep=0"})
    {
        host.Edits(edits);
        method->setCurrentIndex(0);
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(host.Fields(), start);
        QCOMPARE(method->currentIndex(), 2);
        QCOMPARE(host.width->decimals(), 0);
        QCOMPARE(host.height->decimals(), 0);
    }
    QVERIFY(host.dialog->isVisible());
}

void tst_NVImageSize::randomEditsFollowTheArithmetic_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("dpi");
    QTest::newRow("landscape") << QSize(1000, 500) << 72.0;
    QTest::newRow("portrait") << QSize(500, 1000) << 300.0;
    QTest::newRow("photograph") << QSize(4000, 3000) << 254.0;
    QTest::newRow("primes") << QSize(997, 613) << 71.999;
    QTest::newRow("square") << QSize(256, 256) << 96.0;
    QTest::newRow("one pixel") << QSize(1, 1) << 72.0;
    QTest::newRow("largest") << QSize(10000, 10000) << 3200.0;
    QTest::newRow("narrowest") << QSize(1, 10000) << 1.0;
    QTest::newRow("flattest") << QSize(10000, 1) << 600.0;
}

void tst_NVImageSize::randomEditsFollowTheArithmetic()
{
    QFETCH(QSize, size);
    QFETCH(double, dpi);
    const Host host(size, dpi);
    Arithmetic arithmetic(size, dpi);
    QCOMPARE(host.Fields(), arithmetic.Fields());
    QRandomGenerator random(quint32(size.width() * 7 + size.height()));
    QStringList trail;

    for (int i = 0; i < 3000; ++i)
    {
        trail << EditBoth(random, host, arithmetic);
        if (host.Fields() != arithmetic.Fields())
            qWarning("after %s", qPrintable(trail.mid(trail.size() - 12).join(", ")));
        QCOMPARE(host.Fields(), arithmetic.Fields());
    }
}

void tst_NVImageSize::okAcceptsWhatADocumentMayHave_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QString>("edits");
    QTest::addColumn<bool>("accepted");
    const QSize square(100, 100);
    QTest::newRow("unchanged") << square << "" << true;
    QTest::newRow("smallest") << square << "w=1" << true;
    QTest::newRow("largest") << square << "w=10000" << true;
    QTest::newRow("width too large") << square << "keep=0, w=10001" << false;
    QTest::newRow("height too large") << square << "keep=0, h=10001" << false;
    QTest::newRow("no width") << square << "keep=0, w=0" << false;
    QTest::newRow("no height") << square << "keep=0, h=0" << false;
    QTest::newRow("other side too large") << QSize(100, 200) << "w=5001" << false;
    QTest::newRow("other side vanishes") << QSize(1, 10000) << "h=4999" << false;
    QTest::newRow("part of a pixel") << square << "unit=2, w=0.01" << false;
    QTest::newRow("percent of a pixel") << square << "unit=1, w=0.01" << false;
    QTest::newRow("image larger than a document") << QSize(10001, 1) << "" << false;
    QTest::newRow("largest by resolution") << square << "dpi=100, unit=2, w=3.2, dpi=3125" << true;
    QTest::newRow("too large by resolution") << square << "dpi=100, unit=2, w=3.2, dpi=3126" << false;
}

void tst_NVImageSize::okAcceptsWhatADocumentMayHave()
{
    QFETCH(QSize, size);
    QFETCH(QString, edits);
    QFETCH(bool, accepted);
    const Host host(size);
    host.Edits(edits);
    const QString before = host.Fields();
    SignalLog log(host.dialog);
    QList<ModalDriver::Function> functions = {[&](QWidget* dialog)
                                              {
                                                  ModalDriver::Press(dialog, QDialogButtonBox::Ok);
                                                  if (accepted)
                                                      return;
                                                  QVERIFY(dialog->isVisible());
                                                  QCOMPARE(host.Fields(), before);
                                                  QCOMPARE(log.Count(), 0);
                                                  ModalDriver::Press(dialog, QDialogButtonBox::Cancel);
                                              }};
    if (!accepted)
        functions << [](QWidget* box)
        {
            QVERIFY(qobject_cast<KXMessageBox*>(box));
            ModalDriver::Press(box, "OK");
        };
    ModalDriver driver(functions);

    const int result = host.dialog->Exec();

    QVERIFY(driver.Finished());
    QCOMPARE(result, int(accepted ? KXDialog::ResultAccepted : KXDialog::ResultRejected));
    QCOMPARE(host.Fields(), before);
    QCOMPARE(log.Entries(),
             accepted ? QStringList({"Finished(1)", "Accepted()"})
                      : QStringList({"Finished(0)", "Rejected()"}));
}

void tst_NVImageSize::enterInABoxAccepts()
{
    const Host host;
    ModalDriver driver(
        [&host](QWidget* dialog)
        {
            host.width->setFocus();
            host.width->selectAll();
            QTest::keyClicks(host.width, "640");
            ModalDriver::PressKey(dialog, Qt::Key_Return);
        });

    QCOMPARE(host.dialog->Exec(), int(KXDialog::ResultAccepted));
    QVERIFY(driver.Finished());
    QCOMPARE(host.dialog->GetNewSize(), QSize(640, 320));
}

void tst_NVImageSize::cancelKeepsWhatWasTyped()
{
    const Host host;
    ModalDriver driver(
        [&host](QWidget* dialog)
        {
            // What could not be accepted can be cancelled.
            host.Edit("w=0");
            ModalDriver::Press(dialog, "Cancel");
        });

    QCOMPARE(host.dialog->Exec(), int(KXDialog::ResultRejected));
    QVERIFY(driver.Finished());
    QCOMPARE(host.dialog->GetNewSize(), QSize(0, 0));
}

void tst_NVImageSize::escapeAndCloseAreNeitherOkNorCancel()
{
    const Host host;
    ModalDriver escape([](QWidget* dialog) { ModalDriver::PressKey(dialog, Qt::Key_Escape); });
    QCOMPARE(host.dialog->Exec(), int(KXDialog::ResultClosed));
    QVERIFY(escape.Finished());

    ModalDriver close([](QWidget* dialog) { ModalDriver::CloseWindow(dialog); });
    QCOMPARE(host.dialog->Exec(), int(KXDialog::ResultClosed));
    QVERIFY(close.Finished());
}

void tst_NVImageSize::messageTellsTheRanges_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("dpi");
    QTest::addColumn<int>("unit");
    QTest::addColumn<bool>("constrain");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const QSize& size, double dpi, int unit, bool constrain,
                        const QString& width, const QString& height)
    {
        const QString first = unit < Inches
            ? "Cannot resize the image. Maximum dimension exceeded."
            : "Cannot resize the image. Maximum dimension exceeded for the DPI value.";
        const char* const units[] = {"pixels",      "percents",    "inches",     "millimeters",
                                     "millimeters", "millimeters", "millimeters"};
        QTest::newRow(name) << size << dpi << unit << constrain
                            << QString("%1\nThe width should be in the range of %2 %4.\n"
                                       "The height should be in the range of %3 %4.")
                                   .arg(first, width, height, units[unit]);
    };
    const QSize landscape(700, 300);
    const QSize portrait(300, 700);
    // The largest height is not rounded.
    row("pixels, landscape", landscape, 72, Pixels, true, "3 - 10000", "1 - 4285.71");
    row("pixels, portrait", portrait, 72, Pixels, true, "1 - 4286", "3 - 10000");
    row("pixels, free", landscape, 72, Pixels, false, "1 - 10000", "1 - 10000");
    row("pixels, two to one", QSize(1000, 500), 72, Pixels, true, "2 - 10000", "1 - 5000");
    row("pixels, four to three", QSize(800, 600), 72, Pixels, true, "2 - 10000", "1 - 7500");
    row("pixels, square", QSize(256, 256), 72, Pixels, true, "1 - 10000", "1 - 10000");
    row("pixels, one pixel", QSize(1, 1), 72, Pixels, true, "1 - 10000", "1 - 10000");
    row("pixels, largest", QSize(10000, 10000), 72, Pixels, true, "1 - 10000", "1 - 10000");
    row("pixels, narrowest", QSize(1, 10000), 72, Pixels, true, "1 - 1", "10000 - 10000");
    row("pixels, flattest", QSize(10000, 1), 72, Pixels, true, "10000 - 10000", "1 - 1");
    row("percent, landscape", landscape, 72, Percent, true, "0.34 - 1428.57", "0.34 - 1428.57");
    row("percent, portrait", portrait, 72, Percent, true, "0.34 - 1428.57", "0.34 - 1428.57");
    row("percent, free", landscape, 72, Percent, false, "0.15 - 1428.57", "0.34 - 3333.33");
    // 1666.67 percent of 600 are 10000.02.
    row("percent, rounded up", QSize(600, 300), 72, Percent, true, "0.34 - 1666.67", "0.34 - 1666.67");
    row("percent, one pixel", QSize(1, 1), 72, Percent, true, "100 - 1e+06", "100 - 1e+06");
    row("percent, largest", QSize(10000, 10000), 72, Percent, true, "0.01 - 100", "0.01 - 100");
    row("percent, narrowest", QSize(1, 10000), 72, Percent, true, "100 - 100", "100 - 100");
    row("inches, landscape", landscape, 72, Inches, true, "0.04 - 138.88", "0.02 - 59.52");
    row("inches, free", landscape, 72, Inches, false, "0.02 - 138.88", "0.02 - 138.88");
    row("inches, fine", QSize(1000, 500), 300, Inches, true, "0.01 - 33.33", "0.01 - 16.66");
    row("inches, coarse", QSize(1000, 500), 1, Inches, true, "2 - 10000", "1 - 5000");
    row("millimetres, landscape", landscape, 72, Millimetres, true, "0.83 - 3527.77", "0.36 - 1511.9");
    row("millimetres, fine", QSize(1000, 500), 3200, Millimetres, true, "0.02 - 79.37", "0.01 - 39.68");
    // Centimetres in a message on millimetres.
    row("centimetres, landscape", landscape, 72, Centimetres, true, "0.09 - 352.77", "0.04 - 151.19");
    row("points, landscape", landscape, 72, Points, true, "2.34 - 10000", "1 - 4285.71");
    row("picas, landscape", landscape, 72, Picas, true, "0.2 - 833.33", "0.09 - 357.14");
}

void tst_NVImageSize::messageTellsTheRanges()
{
    QFETCH(QSize, size);
    QFETCH(double, dpi);
    QFETCH(int, unit);
    QFETCH(bool, constrain);
    QFETCH(QString, text);
    const Host host(size, dpi);
    host.Edit(QString("keep=%1").arg(constrain));
    host.Edit(QString("unit=%1").arg(unit));
    host.Edit("w=100000");
    // Of a single pixel that is a size which a document may have.
    if (host.dialog->GetNewSize().width() <= 10000)
        host.Edit("w=0.01");
    const QString before = host.Fields();
    ModalDriver driver({[&](QWidget* dialog)
                        {
                            ModalDriver::Press(dialog, "OK");
                            QVERIFY(dialog->isVisible());
                            QCOMPARE(host.Fields(), before);
                            ModalDriver::Press(dialog, "Cancel");
                        },
                        [&text](QWidget* window)
                        {
                            const auto* box = qobject_cast<KXMessageBox*>(window);
                            QVERIFY(box);
                            QCOMPARE(box->GetText(), text);
                            QCOMPARE(box->windowTitle(), QString("Operation error"));
                            QCOMPARE(int(box->GetIcon()), 1);
                            QCOMPARE(int(box->GetDefaultButton()), 1024);
                            const auto* buttons = box->findChild<QDialogButtonBox*>();
                            QCOMPARE(buttons->standardButtons(),
                                     QDialogButtonBox::StandardButtons(QDialogButtonBox::Ok));
                            ModalDriver::PressKey(window, Qt::Key_Return);
                        }});

    QCOMPARE(host.dialog->Exec(), int(KXDialog::ResultRejected));
    QVERIFY(driver.Finished());
}

void tst_NVImageSize::messageStandsOverTheMainWindow()
{
    QWidget mainWindow;
    const KXMdiArea area(&mainWindow);
    mainWindow.show();
    QVERIFY(QTest::qWaitForWindowActive(&mainWindow));
    const Host host(QSize(100, 100), 72.0, &mainWindow);
    ModalDriver driver({[&host](QWidget* dialog)
                        {
                            host.Edit("w=0");
                            host.width->setFocus();
                            ModalDriver::PressKey(dialog, Qt::Key_Return);
                            QTRY_VERIFY(dialog->isActiveWindow());
                            QCOMPARE(QApplication::focusWidget(), host.width);
                            ModalDriver::Press(dialog, "Cancel");
                        },
                        [&mainWindow](QWidget* box)
                        {
                            QCOMPARE(box->parentWidget(), &mainWindow);
                            ModalDriver::PressKey(box, Qt::Key_Escape);
                        }});

    QCOMPARE(host.dialog->Exec(), int(KXDialog::ResultRejected));
    QVERIFY(driver.Finished());
}

void tst_NVImageSize::zeroIsRefused()
{
    const Host host;
    ModalDriver driver({[&host](QWidget* dialog)
                        {
                            host.width->setFocus();
                            host.width->selectAll();
                            QTest::keyClicks(host.width, "0");
                            QCOMPARE(host.Sizes(), QString("0x0, boxes 0 and 0"));
                            ModalDriver::PressKey(dialog, Qt::Key_Enter);
                            QVERIFY(dialog->isVisible());
                            QCOMPARE(host.Sizes(), QString("0x0, boxes 0 and 0"));
                            ModalDriver::Press(dialog, "Cancel");
                        },
                        [](QWidget* box) { ModalDriver::Press(box, "OK"); }});

    QCOMPARE(host.dialog->Exec(), int(KXDialog::ResultRejected));
    QVERIFY(driver.Finished());
}

void tst_NVImageSize::rangesAreThoseWorkedOutByHand()
{
    const NVImageSize dialog(72.0, QSize(1, 1), nullptr);
    QRandomGenerator random(4);
    const int sides[] = {Least, -1, 0, 1, 2, 3, 9999, 10000, 10001, 65536, Most};
    const auto side = [&]
    {
        return random.bounded(4) == 0 ? sides[random.bounded(11)]
                                      : 1 + random.bounded(1 << random.bounded(1, 15));
    };

    for (int i = 0; i < 20000; ++i)
    {
        const bool constrain = random.bounded(2);
        const int unit = random.bounded(7);
        const double dpi = random.bounded(1000, 3200001) / 1000.0;
        const int w = side();
        const int h = side();
        const QRectF limits = (dialog.*Revealed(RangesTag()))(constrain, unit, dpi, w, h);
        const QRectF expected = LimitsByHand(constrain, unit, dpi, w, h);
        // To the last bit.
        const bool same = limits.x() == expected.x() && limits.y() == expected.y() &&
            limits.width() == expected.width() && limits.height() == expected.height();
        QVERIFY2(same, qPrintable(QString("%1 %2 %3 %4x%5").arg(constrain).arg(unit).arg(dpi).arg(w).arg(h)));
        if (w >= 1 && h >= 1 && w <= 10000 && h <= 10000)
            QVERIFY(limits.x() > 0.0 && limits.y() > 0.0);
    }
    // Numbers that mean nothing do no harm.
    for (const int unit : {Least, -1, 0, 1, 2, 6, 7, Most})
        for (const double dpi : {0.0, -1.0, NotANumber, Infinity, 1e-300, 1e300})
            for (const int w : sides)
                (dialog.*Revealed(RangesTag()))(true, unit, dpi, w, Most);
}

void tst_NVImageSize::sizesOfNoImageAreHarmless()
{
    const NVImageSize dialog(72.0, QSize(1, 1), nullptr);
    const auto bytes = [&dialog](int w, int h) { return (dialog.*Revealed(BytesTag()))(w, h); };

    QCOMPARE(bytes(10000, 10000), qint64(400000000));
    QCOMPARE(bytes(100000, 100000), qint64(40000000000));
    QCOMPARE(bytes(0, Most), qint64(0));
    QCOMPARE(bytes(-2, 3), qint64(-24));
    const qint64 most = std::numeric_limits<qint64>::max() / 4 * 4;
    QCOMPARE(bytes(Most, Most), most);
    QCOMPARE(bytes(Least, Least), most);
    QCOMPARE(bytes(Least, Most), -most);

    for (const double dpi : {NotANumber, 0.0, -Infinity})
    {
        const Host host(QSize(), dpi);
        QVERIFY(host.dialog->GetDPI() >= 1.0 && host.dialog->GetDPI() <= 3200.0);
        QCOMPARE(host.dialog->GetNewSize(), QSize(-1, -1));
        host.Edits("unit=1, w=50, unit=2, h=3, dpi=9, keep=0, keep=1, reset");
        QCOMPARE(host.dialog->GetNewSize(), QSize(-1, -1));
    }
}

void tst_NVImageSize::extremeNumbersFollowTheArithmetic()
{
    const int sides[] = {Least, -1, 0, 1, 2, 10001, 65536, Most};
    const double dpis[] = {-Infinity, -1.0, 0.0, 1e-300, 72.0, 1e300, Infinity};
    QRandomGenerator random(5);

    for (const int w : sides)
    {
        for (const int h : sides)
        {
            const double dpi = dpis[random.bounded(7)];
            const Host host(QSize(w, h), dpi);
            Arithmetic arithmetic(QSize(w, h), std::max(-1e9, std::min(1e9, dpi)));
            QString trail = QString("%1x%2 at %3").arg(w).arg(h).arg(dpi);
            for (int i = 0; i < 150; ++i)
            {
                trail += ", " + EditBoth(random, host, arithmetic);
                QVERIFY2(host.Fields() == arithmetic.Fields(),
                         qPrintable(trail.right(300) + '\n' + host.Fields() + '\n' + arithmetic.Fields()));
            }
        }
    }
}

void tst_NVImageSize::diesInMidEdit_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<bool>("withParent");
    QTest::addColumn<bool>("late");
    for (const char* box : {"m_pNewWidth", "m_pNewHeight", "m_pResolution"})
    {
        for (const char* keys : {"", "0", "7", "0.0", "-"})
        {
            QTest::addRow("%s, \"%s\"", box, keys) << box << keys << false << false;
            QTest::addRow("%s, \"%s\", with its parent", box, keys) << box << keys << true << false;
        }
        QTest::addRow("%s, a number not told yet", box) << box << "7" << false << true;
        QTest::addRow("%s, a number not told yet, with its parent", box) << box << "7" << true << true;
    }
}

void tst_NVImageSize::diesInMidEdit()
{
    QFETCH(QString, box);
    QFETCH(QString, keys);
    QFETCH(bool, withParent);
    QFETCH(bool, late);
    QPointer<QWidget> parent(new QWidget);
    Host host(QSize(100, 50), 72.0, parent);
    host.Edit("unit=2");
    auto* edited = host.dialog->findChild<QDoubleSpinBox*>(box);
    edited->setKeyboardTracking(!late);
    ModalDriver driver(
        [&](QWidget* dialog)
        {
            edited->setFocus();
            edited->selectAll();
            QTest::keyClick(edited, Qt::Key_Delete);
            QTest::keyClicks(edited, keys);
            if (withParent)
                delete parent;
            else
                delete dialog;
        });

    QCOMPARE(host.dialog->Exec(), int(KXDialog::ResultClosed));
    QVERIFY(driver.Finished());
    QVERIFY(!host.dialog);
    delete parent;
}

void tst_NVImageSize::diesUnderItsMessage_data()
{
    QTest::addColumn<bool>("mainWindow");
    QTest::newRow("the dialog") << false;
    QTest::newRow("the main window") << true;
}

void tst_NVImageSize::diesUnderItsMessage()
{
    QFETCH(bool, mainWindow);
    QPointer<QWidget> window(new QWidget);
    new KXMdiArea(window);
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window));
    Host host(QSize(100, 50), 72.0, window);
    host.Edit("w=0");
    ModalDriver driver({[](QWidget* dialog) { ModalDriver::Press(dialog, "OK"); },
                        [&](QWidget* box)
                        {
                            if (mainWindow)
                            {
                                delete window;
                                return;
                            }
                            delete host.dialog;
                            ModalDriver::Press(box, "OK");
                        }});

    QCOMPARE(host.dialog->Exec(), int(KXDialog::ResultClosed));
    QVERIFY(driver.Finished());
    QVERIFY(!host.dialog);
    delete window;
}

NV_TEST_MAIN(tst_NVImageSize)
#include "tst_NVImageSize.moc"
