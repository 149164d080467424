// Gradient files: what is read from each kind, round trips, and files that mean no good.

#include "GradientFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cmath>

#include "GradientTable.h"
#include "TestMain.h"

namespace
{

const char GgrHead[] = "GIMP Gradient\nName: Ember\n";

// What the gradient looks like at a place, premultiplied.
QVector<double> LookAt(const QGradientStops& stops, double place)
{
    int i = 0;
    while (i + 2 < stops.size() && place > stops.at(i + 1).first)
        ++i;
    const QGradientStop& from = stops.at(i);
    const QGradientStop& to = stops.at(i + 1);
    const double length = to.first - from.first;
    const double way = length > 0 ? qBound(0.0, (place - from.first) / length, 1.0) : 0.0;
    const auto channels = [](const QColor& color)
    {
        const double alpha = color.alphaF();
        return QVector<double>{color.redF() * alpha, color.greenF() * alpha, color.blueF() * alpha, alpha};
    };
    QVector<double> look = channels(from.second);
    const QVector<double> other = channels(to.second);
    for (int c = 0; c < 4; ++c)
        look[c] += (other.at(c) - look.at(c)) * way;
    return look;
}

bool LooksLike(const QGradientStops& stops, double place, double red, double green, double blue, double alpha)
{
    const QVector<double> look = LookAt(stops, place);
    const double expected[] = {red * alpha, green * alpha, blue * alpha, alpha};
    for (int c = 0; c < 4; ++c)
    {
        if (std::abs(look.at(c) - expected[c]) > 1.0 / 255)
            return false;
    }
    return true;
}

QByteArray Segments(const QList<QByteArray>& lines)
{
    return GgrHead + QByteArray::number(lines.size()) + '\n' + lines.join('\n') + '\n';
}

QByteArray Svg(const QByteArray& inner)
{
    return "<?xml version=\"1.0\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" "
           "xmlns:xlink=\"http://www.w3.org/1999/xlink\"><defs>" +
        inner + "</defs></svg>\n";
}

} // namespace

class tst_GradientFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void aSegmentLooksAsItDoesInTheFile()
    {
        const NamedGradient gradient = readOne(Segments({"0 0.5 1 1 0 0 1 0 0 1 0.5 0 0 0 0"}));

        QCOMPARE(gradient.name, QString("Ember"));
        QVERIFY(LooksLike(gradient.stops, 0.0, 1, 0, 0, 1));
        QVERIFY(LooksLike(gradient.stops, 0.5, 0.5, 0, 0.5, 0.75));
        QVERIFY(LooksLike(gradient.stops, 1.0, 0, 0, 1, 0.5));
        QCOMPARE(readOne(Segments({"0 0.5 1 1 0 0 1 0 0 1 1 0 0"})).stops,
                 (QGradientStops{{0.0, Qt::red}, {1.0, Qt::blue}}));
    }

    void eachKindOfSegmentBlendsItsWay_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<double>("middle");
        QTest::addColumn<double>("atQuarter");
        QTest::addColumn<double>("atThreeQuarters");
        QTest::newRow("linear") << 0 << 0.5 << 0.25 << 0.75;
        QTest::newRow("linear, middle at 0.2")
            << 0 << 0.2 << 0.5 + 0.5 * 0.05 / 0.8 << 0.5 + 0.5 * 0.55 / 0.8;
        QTest::newRow("curved, middle at 0.25") << 1 << 0.25 << 0.5 << std::sqrt(0.75);
        QTest::newRow("sine") << 2 << 0.5 << 0.1464466 << 0.8535534;
        QTest::newRow("sphere, increasing") << 3 << 0.5 << std::sqrt(0.4375) << std::sqrt(0.9375);
        QTest::newRow("sphere, decreasing") << 4 << 0.5 << 1 - std::sqrt(0.9375) << 1 - std::sqrt(0.4375);
        QTest::newRow("step") << 5 << 0.5 << 0.0 << 1.0;
    }
    void eachKindOfSegmentBlendsItsWay()
    {
        QFETCH(int, kind);
        QFETCH(double, middle);
        QFETCH(double, atQuarter);
        QFETCH(double, atThreeQuarters);

        const QGradientStops stops =
            readOne(Segments({"0 " + QByteArray::number(middle) + " 1 0 0 0 1 1 1 1 1 " +
                              QByteArray::number(kind) + " 0"}))
                .stops;

        QVERIFY(LooksLike(stops, 0.25, atQuarter, atQuarter, atQuarter, 1));
        QVERIFY(LooksLike(stops, 0.75, atThreeQuarters, atThreeQuarters, atThreeQuarters, 1));
        QVERIFY(LooksLike(stops, 0, 0, 0, 0, 1));
        QVERIFY(LooksLike(stops, 1, 1, 1, 1, 1));
        QVERIFY(stops.size() <= 130);
    }

    void huesRunEitherWay()
    {
        // From red to blue: over green, or over magenta.
        const QGradientStops up = readOne(Segments({"0 0.5 1 1 0 0 1 0 0 1 1 0 1"})).stops;
        const QGradientStops down = readOne(Segments({"0 0.5 1 1 0 0 1 0 0 1 1 0 2"})).stops;

        QVERIFY(LooksLike(up, 0.25, 1, 1, 0, 1));
        QVERIFY(LooksLike(up, 0.5, 0, 1, 0, 1));
        QVERIFY(LooksLike(up, 0.75, 0, 1, 1, 1));
        QVERIFY(LooksLike(down, 0.5, 1, 0, 1, 1));
        const QGradientStops back = readOne(Segments({"0 0.5 1 0 0 1 1 1 0 0 1 0 1"})).stops;
        QVERIFY(LooksLike(back, 0.5, 1, 0, 1, 1));
    }

    void aGreyTakesTheHueOfTheOther()
    {
        const QGradientStops stops = readOne(Segments({"0 0.5 1 1 1 1 1 0 1 0 1 0 1"})).stops;

        QVERIFY(LooksLike(stops, 0.5, 0.5, 1, 0.5, 1));
    }

    void segmentsFollowEachOtherWithHardEdges()
    {
        const QGradientStops stops =
            readOne(Segments({"0 0.1 0.3 1 0 0 1 1 0 0 1 0 0", "0.3 0.5 1 0 1 0 1 0 1 0 1 0 0"})).stops;

        QVERIFY(LooksLike(stops, 0.29999, 1, 0, 0, 1));
        QVERIFY(LooksLike(stops, 0.30001, 0, 1, 0, 1));
    }

    void ownColoursStandAsBlackAndWhite()
    {
        const QGradientStops stops =
            readOne(Segments({"0 0.25 0.5 1 0 0 1 1 0 0 1 0 0 1 3", "0.5 0.75 1 1 0 0 1 1 0 0 1 0 0 4 2"}))
                .stops;

        QVERIFY(LooksLike(stops, 0, 0, 0, 0, 1));
        QVERIFY(LooksLike(stops, 0.4999, 1, 1, 1, 1));
        QVERIFY(LooksLike(stops, 0.5001, 1, 1, 1, 0));
        QVERIFY(LooksLike(stops, 1, 0, 0, 0, 0));
    }

    void aGgrWithoutNameIsNamedAfterTheFile()
    {
        const NamedGradient gradient =
            readOne("GIMP Gradient\r\n1\r\n0 0.5 1 1 0 0 1 0 0 1 1 0 0\r\n", "sunset.ggr");

        QCOMPARE(gradient.name, QString("sunset"));
        QCOMPARE(gradient.stops.size(), 2);
    }

    void svgStopsAreReadInAllTheirSpellings()
    {
        const QVector<NamedGradient> all =
            read(Svg("<linearGradient id='a' gradientTransform='rotate(45)'>"
                     "<stop offset='0' stop-color='#ff0000'/>"
                     "<stop offset='20%' style='stop-color:rgb(0, 255, 0); stop-opacity:0.5'/>"
                     "<stop offset='.4' stop-color='royalblue' style='stop-color:#00f'/>"
                     "<stop offset='60%' stop-color='RoyalBlue' stop-opacity='25%'/>"
                     "<stop offset='0.8' stop-color='rgb(100%,0%,50%)'/>"
                     "<stop offset='1' stop-color='#11223380'/>"
                     "</linearGradient>"),
                 "a.svg");

        QCOMPARE(all.size(), 1);
        QCOMPARE(all[0].name, QString("a"));
        const QGradientStops stops = all[0].stops;
        QCOMPARE(stops.size(), 6);
        QCOMPARE(stops[0], QGradientStop(0.0, Qt::red));
        QCOMPARE(stops[1].first, 0.2);
        QCOMPARE(stops[1].second.rgba(), qRgba(0, 255, 0, 128));
        QCOMPARE(stops[2].second.rgba(), qRgb(0, 0, 255));
        QCOMPARE(stops[3].second.rgba(), qRgba(65, 105, 225, 64));
        QCOMPARE(stops[4].second.rgba(), qRgb(255, 0, 128));
        QCOMPARE(stops[5].second.rgba(), qRgba(0x11, 0x22, 0x33, 0x80));
    }

    void svgStopsAreInheritedOverReferences()
    {
        const QVector<NamedGradient> all =
            read(Svg("<radialGradient id='third' xlink:href='#second'/>"
                     "<linearGradient id='second' href='#first'/>"
                     "<linearGradient id='first'><title>First of all</title><stop offset='0'/>"
                     "<stop offset='1' stop-color='white'/></linearGradient>"
                     "<linearGradient id='ring1' href='#ring2'/><linearGradient id='ring2' href='#ring1'/>"
                     "<linearGradient id='lost' href='#nowhere'/>"),
                 "a.svg");

        QCOMPARE(all.size(), 3);
        QCOMPARE(all[0].name, QString("third"));
        QCOMPARE(all[2].name, QString("First of all"));
        for (const NamedGradient& gradient : all)
            QCOMPARE(gradient.stops, (QGradientStops{{0.0, Qt::black}, {1.0, Qt::white}}));
    }

    void svgStopsThatGoBackAreMovedUp()
    {
        const QVector<NamedGradient> all = read(Svg("<linearGradient><stop offset='0.5'/><stop offset='0.2'/>"
                                                    "<stop offset='7'/></linearGradient>"),
                                                "name.svg");

        QCOMPARE(all[0].name, QString("name"));
        QCOMPARE(all[0].stops[1].first, 0.5);
        QCOMPARE(all[0].stops[2].first, 1.0);
    }

    void aSingleStopFillsTheGradient()
    {
        const QVector<NamedGradient> all =
            read(Svg("<linearGradient><stop offset='0.5' stop-color='lime'/></linearGradient>"), "a.svg");

        QCOMPARE(all[0].stops, (QGradientStops{{0.0, Qt::green}, {1.0, Qt::green}}));
    }

    void svgRoundTripsAreExact()
    {
        QVector<NamedGradient> all = {
            {"Ember & <Ash> \"hot\"", {{0.0, QColor(1, 2, 3)}, {1.0 / 3, QColor(200, 100, 50, 127)}}},
            {QString::fromUtf8("Größe \xf0\x9f\x8c\x88"),
             {{0.25, Qt::red}, {0.5, Qt::green}, {0.5, Qt::green}, {0.5, QColor(0, 0, 0, 0)}}},
            {"Fine",
             {{0.1, QColor::fromRgbF(0.123456, 0.5, 0.7)}, {1.0, QColor::fromRgbF(1, 1, 1, 0.3333)}}}};

        QVERIFY(write("all.svg", all));

        const QVector<NamedGradient> again = read(QByteArray(), "all.svg");
        QCOMPARE(again.size(), all.size());
        for (int i = 0; i < all.size(); ++i)
        {
            QCOMPARE(again[i].name, all[i].name);
            QCOMPARE(again[i].stops, all[i].stops);
        }
    }

    void ggrRoundTripsLookTheSame_data()
    {
        QTest::addColumn<QGradientStops>("stops");
        QTest::newRow("two") << QGradientStops{{0.0, Qt::red}, {1.0, Qt::blue}};
        QTest::newRow("inner stops") << QGradientStops{{0.2, Qt::red}, {0.7, Qt::blue}};
        QTest::newRow("hard edges") << QGradientStops{
            {0.0, Qt::red}, {0.5, Qt::red}, {0.5, Qt::blue}, {1.0, Qt::blue}};
        QTest::newRow("fading") << QGradientStops{{0.0, Qt::red}, {1.0, QColor(0, 0, 255, 0)}};
        QTest::newRow("half fading") << QGradientStops{
            {0.0, QColor(255, 0, 0, 20)}, {0.6, QColor(0, 255, 255)}, {1.0, QColor(0, 0, 255, 90)}};
        QTest::newRow("from nothing to nothing")
            << QGradientStops{{0.0, QColor(255, 0, 0, 0)}, {1.0, QColor(0, 255, 255, 0)}};
        QTest::newRow("at one place") << QGradientStops{{0.4, Qt::red}, {0.4, Qt::blue}};
    }
    void ggrRoundTripsLookTheSame()
    {
        QFETCH(QGradientStops, stops);
        QVERIFY(write("one.ggr", {{"One", stops}}));

        const NamedGradient again = read(QByteArray(), "one.ggr").value(0);

        QCOMPARE(again.name, QString("One"));
        std::vector<float> places;
        for (int i = 0; i < 1000; ++i)
            places.push_back((float(i) + 0.5f) / 1000);
        std::vector<QRgb> before(places.size());
        std::vector<QRgb> after(places.size());
        const int count = int(places.size());
        GradientTable(stops, false, 1, true).Fill(places.data(), before.data(), count, 0, 0);
        GradientTable(again.stops, false, 1, true).Fill(places.data(), after.data(), count, 0, 0);
        for (size_t i = 0; i < places.size(); ++i)
        {
            QVERIFY(qAbs(qRed(before[i]) - qRed(after[i])) <= 2);
            QVERIFY(qAbs(qGreen(before[i]) - qGreen(after[i])) <= 2);
            QVERIFY(qAbs(qBlue(before[i]) - qBlue(after[i])) <= 2);
            QVERIFY(qAbs(qAlpha(before[i]) - qAlpha(after[i])) <= 2);
        }
    }

    void aGgrHoldsTheFirstGradientAlone()
    {
        QVERIFY(write("one.GGR", {{"One", {{0.0, Qt::red}, {1.0, Qt::blue}}}, {"Two", {{0.0, Qt::red}}}}));

        const QVector<NamedGradient> again = read(QByteArray(), "one.GGR");
        QCOMPARE(again.size(), 1);
        QCOMPARE(again[0].stops, (QGradientStops{{0.0, Qt::red}, {1.0, Qt::blue}}));
    }

    void namesCannotBreakTheFile()
    {
        const QString evil = QString("a\n5\n0 0 ") + QChar(1) + QChar(0xfffe) + QString(1000, 'x');
        for (const char* file : {"evil.ggr", "evil.svg"})
        {
            QVERIFY(write(file, {{evil, {{0.0, Qt::red}, {1.0, Qt::blue}}}}));
            const QVector<NamedGradient> again = read(QByteArray(), file);
            QCOMPARE(again.size(), 1);
            QVERIFY(again[0].name.startsWith("a 5 0 0 __xxx"));
            QVERIFY(again[0].name.size() <= 200);
        }
    }

    void badFilesAreRefusedWithNameAndReason_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("reason");
        const QByteArray good = "0 0.5 1 1 0 0 1 0 0 1 1 0 0";
        QTest::newRow("empty") << QByteArray() << "empty";
        QTest::newRow("binary") << QByteArray("\x89PNG\r\n\x1a\n\0\0\0", 11) << "neither";
        QTest::newRow("zeros") << QByteArray(5000, '\0') << "neither";
        QTest::newRow("ggr, head alone") << QByteArray(GgrHead) << "how many";
        QTest::newRow("ggr, no number") << QByteArray(GgrHead) + "many\n"
                                        << "how many";
        QTest::newRow("ggr, no segments") << QByteArray(GgrHead) + "0\n"
                                          << "how many";
        QTest::newRow("ggr, less than none") << QByteArray(GgrHead) + "-5\n"
                                             << "how many";
        QTest::newRow("ggr, too many") << QByteArray(GgrHead) + "1000000\n"
                                       << "1000000";
        QTest::newRow("ggr, cut short") << QByteArray(GgrHead) + "3\n" + good + "\n"
                                        << "too early";
        QTest::newRow("ggr, cut in a line") << QByteArray(GgrHead) + "1\n0 0.5 1 1 0\n"
                                            << "Line 4";
        for (const char* number : {"nan", "inf", "-inf", "1e999", "x", "0x10", "1,5"})
        {
            QByteArray line = good;
            QTest::addRow("ggr, %s for a colour", number)
                << Segments({line.replace(" 1 1 0 0", " 1 1 0 " + QByteArray(number))}) << "Line 4";
            QTest::addRow("ggr, %s for a place", number)
                << Segments({QByteArray(number) + " 0.5 1 1 0 0 1 0 0 1 1 0 0"}) << "Line 4";
            QTest::addRow("svg, %s for a place", number)
                << Svg("<linearGradient><stop offset='" + QByteArray(number) + "'/></linearGradient>")
                << "no place";
            QTest::addRow("svg, %s for an opacity", number)
                << Svg("<linearGradient><stop stop-opacity='" + QByteArray(number) + "'/></linearGradient>")
                << "no opacity";
        }
        QTest::newRow("ggr, gap") << Segments(
                                         {"0 0.1 0.2 1 0 0 1 0 0 1 1 0 0", "0.4 0.5 1 1 0 0 1 0 0 1 1 0 0"})
                                  << "Line 5";
        QTest::newRow("ggr, backwards") << Segments({"0 0.5 -1 1 0 0 1 0 0 1 1 0 0"}) << "Line 4";
        QTest::newRow("ggr, beyond the end") << Segments({"0 0.5 7 1 0 0 1 0 0 1 1 0 0"}) << "Line 4";
        QTest::newRow("ggr, not to the end")
            << Segments({"0 0.1 0.2 1 0 0 1 0 0 1 1 0 0"}) << "before the end";
        QTest::newRow("svg, no gradients") << Svg("<rect/>") << "no gradient";
        QTest::newRow("svg, gradients without stops") << Svg("<linearGradient id='a'/>") << "no gradient";
        QTest::newRow("svg, cut short")
            << Svg("<linearGradient><stop offset='0'/></linearGradient>").chopped(30) << "Line";
        QTest::newRow("svg, no colour")
            << Svg("<linearGradient><stop stop-color='blurple'/></linearGradient>") << "no colour";
        QTest::newRow("svg, half a colour")
            << Svg("<linearGradient><stop stop-color='#12'/></linearGradient>") << "no colour";
        QTest::newRow("svg, colour of hostile numbers")
            << Svg("<linearGradient><stop stop-color='rgb(nan,1e999,inf)'/></linearGradient>") << "no colour";
        QTest::newRow("svg, a million stops")
            << Svg("<linearGradient>" + QByteArray("<stop/>").repeated(1000000) + "</linearGradient>")
            << "more than";
        QTest::newRow("svg, a million gradients")
            << Svg(QByteArray("<linearGradient/>").repeated(1000000)) << "more than";
        QByteArray bomb = "<?xml version='1.0'?><!DOCTYPE svg [<!ENTITY a0 'aaaaaaaaaa'>";
        for (int i = 1; i < 12; ++i)
        {
            const QByteArray before = "&a" + QByteArray::number(i - 1) + ';';
            bomb += "<!ENTITY a" + QByteArray::number(i) + " '" + before.repeated(10) + "'>";
        }
        QTest::newRow("svg, entity bomb")
            << bomb + "]><svg><linearGradient id='&a11;'><title>&a11;</title></linearGradient></svg>"
            << "Line";
        QTest::newRow("svg, entity of itself")
            << QByteArray("<!DOCTYPE svg [<!ENTITY a '&b;'><!ENTITY b '&a;'>]><svg><title>&a;</title></svg>")
            << "Line";
        QTest::newRow("svg, entity of a file")
            << QByteArray("<!DOCTYPE svg [<!ENTITY a SYSTEM 'file:///etc/passwd'>]><svg>&a;</svg>") << "";
    }
    void badFilesAreRefusedWithNameAndReason()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, reason);
        const QString path = fileFor("strange file.svg", text);
        QString error;

        const QVector<NamedGradient> all = GradientFile::Read(path, &error);

        QVERIFY(all.isEmpty());
        QVERIFY2(error.contains("strange file.svg"), qPrintable(error));
        QVERIFY2(error.contains(reason), qPrintable(error));
    }

    void whatIsNoFileIsRefused()
    {
        QString error;
        QVERIFY(GradientFile::Read(m_folder->filePath("nowhere.ggr"), &error).isEmpty());
        QVERIFY(error.contains("nowhere.ggr"));
        QVERIFY(GradientFile::Read(m_folder->path(), &error).isEmpty());
        QVERIFY(error.contains("plain file"));
    }

    void deepNestingIsNoDanger()
    {
        const QByteArray deep = Svg(QByteArray("<g>").repeated(200000) + "<linearGradient><stop/>" +
                                    "</linearGradient>" + QByteArray("</g>").repeated(200000));

        QCOMPARE(read(deep, "deep.svg").size(), 1);
    }

    void anyCutOfAFileIsReadOrRefused()
    {
        QVERIFY(write("a.svg", {{"One", {{0.0, Qt::red}, {1.0, QColor(0, 0, 255, 3)}}}}));
        QVERIFY(write("a.ggr", {{"One", {{0.0, Qt::red}, {1.0, QColor(0, 0, 255, 3)}}}}));
        for (const char* name : {"a.svg", "a.ggr"})
        {
            QFile file(m_folder->filePath(name));
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QByteArray whole = file.readAll();
            for (int size = 0; size < whole.size(); ++size)
            {
                QString error;
                const QVector<NamedGradient> all =
                    GradientFile::Read(fileFor("cut", whole.left(size)), &error);
                QCOMPARE(all.isEmpty(), !error.isEmpty());
            }
        }
    }

    void aFileThatCannotBeWrittenIsTold()
    {
        const QVector<NamedGradient> all = {{"One", {{0.0, Qt::red}, {1.0, Qt::blue}}}};
        QString error;
        QVERIFY(!GradientFile::Write(m_folder->filePath("nowhere/a.svg"), all, &error));
        QVERIFY(error.contains("a.svg"));
        QVERIFY(!GradientFile::Write(m_folder->filePath("a.png"), all, &error));
        QVERIFY(error.contains(".ggr"));
        QVERIFY(!QFile::exists(m_folder->filePath("a.png")));
        QVERIFY(!GradientFile::Write(m_folder->filePath("a.svg"), {}, &error));
        QVERIFY(!QFile::exists(m_folder->filePath("a.svg")));
    }

    void filtersNameBothKinds()
    {
        QVERIFY(GradientFile::ReadFilter().contains("*.ggr *.svg"));
        QVERIFY(GradientFile::WriteFilter().contains("*.ggr") &&
                GradientFile::WriteFilter().contains("*.svg"));
    }

private:
    QString fileFor(const QString& name, const QByteArray& text)
    {
        QFile file(m_folder->filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("no place for files");
        return file.fileName();
    }
    // Without text, the file that is there.
    QVector<NamedGradient> read(const QByteArray& text, const QString& name)
    {
        QString error = "not set";
        const QString path = text.isEmpty() ? m_folder->filePath(name) : fileFor(name, text);
        const QVector<NamedGradient> all = GradientFile::Read(path, &error);
        if (!error.isEmpty())
            qWarning("%s", qPrintable(error));
        return all;
    }
    NamedGradient readOne(const QByteArray& text, const QString& name = "a.ggr")
    {
        return read(text, name).value(0);
    }
    bool write(const QString& name, const QVector<NamedGradient>& all)
    {
        QString error = "not set";
        return GradientFile::Write(m_folder->filePath(name), all, &error) && error.isEmpty();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

NV_TEST_MAIN(tst_GradientFile)
#include "tst_GradientFile.moc"
