// The list of gradients: what is shipped, what is kept from one start to the next, and damaged storage.

#include "GradientLibrary.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QTemporaryDir>

#include "GradientStops.h"
#include "TestMain.h"

class tst_GradientLibrary : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void twentyFourGradientsAreShipped()
    {
        const QVector<NamedGradient> all = GradientLibrary::Shipped();
        QSet<QString> names;
        int transparent = 0;
        int hard = 0;
        for (const NamedGradient& gradient : all)
        {
            names += gradient.name;
            QVERIFY(gradient.stops.size() >= 2);
            bool isTransparent = false;
            bool isHard = false;
            for (int i = 0; i < gradient.stops.size(); ++i)
            {
                const QGradientStop& stop = gradient.stops.at(i);
                QVERIFY(stop.first >= 0 && stop.first <= 1 && stop.second.isValid());
                isTransparent |= stop.second.alpha() < 255;
                isHard |= i > 0 && stop.first - gradient.stops.at(i - 1).first < 1e-5;
                QVERIFY(i == 0 || gradient.stops.at(i - 1).first < stop.first);
            }
            transparent += isTransparent;
            hard += isHard;
        }
        QCOMPARE(all.size(), 24);
        QCOMPARE(names.size(), 24);
        QVERIFY(transparent >= 4 && hard >= 4);
    }

    void noTwoShippedGradientsAreAlike()
    {
        const QVector<NamedGradient> all = GradientLibrary::Shipped();
        for (int i = 0; i < all.size(); ++i)
        {
            for (int j = 0; j < i; ++j)
                QVERIFY(all.at(i).stops != all.at(j).stops);
        }
    }

    void atFirstThereIsWhatIsShipped()
    {
        const GradientLibrary library(path());

        QCOMPARE(library.GetGradients().size(), 24);
        QCOMPARE(library.GetList().size(), 24);
        QVERIFY(library.GetProblem().isEmpty());
        QVERIFY(!QFile::exists(path()));
    }

    void theListIsExactlyTheSameAtTheNextStart()
    {
        QString error = "not set";
        GradientLibrary library(path());
        QVERIFY(library.Update(library.GetList(), &error));
        QVERIFY(error.isEmpty());

        const GradientLibrary again(path());

        QVERIFY(again.GetProblem().isEmpty());
        QCOMPARE(again.GetList(), library.GetList());
        for (int i = 0; i < 24; ++i)
            QCOMPARE(again.GetGradients().at(i).name, library.GetGradients().at(i).name);
    }

    void namesStayWithTheirGradients()
    {
        GradientLibrary library(path());
        const QVector<NamedGradient> before = library.GetGradients();
        QList<QList<NVGradientStop>> list = library.GetList();
        list[5] = list[5].mid(0, 2);
        list.append(list.at(3));
        list.removeAt(10);
        list.append(QList<NVGradientStop>{list.at(0).first(), list.at(1).first()});
        QString error;

        QVERIFY(library.Update(list, &error));

        const QVector<NamedGradient> after = library.GetGradients();
        QCOMPARE(after.size(), 25);
        for (int i = 0; i < 10; ++i)
            QCOMPARE(after.at(i).name, before.at(i).name);
        for (int i = 10; i < 23; ++i)
            QCOMPARE(after.at(i).name, before.at(i + 1).name);
        QCOMPARE(after.at(23).name, QString("Gradient 1"));
        QCOMPARE(after.at(24).name, QString("Gradient 2"));
        QCOMPARE(library.GetList(), list);
    }

    void newNamesAreFreeOnes()
    {
        GradientLibrary library(path());
        QString error;
        QVERIFY(library.Add({{"Gradient 1", {{0.0, Qt::red}, {1.0, Qt::blue}}}}, &error));
        QList<QList<NVGradientStop>> list = library.GetList();
        list.append(list.at(0));

        QVERIFY(library.Update(list, &error));

        QCOMPARE(library.GetGradients().last().name, QString("Gradient 2"));
    }

    void thousandsOfGradientsAreNoTrouble()
    {
        QList<QList<NVGradientStop>> list;
        for (int i = 0; i < 5000; ++i)
            list.append(FromGradientStops({{0.0, QColor::fromRgb(QRgb(i))}, {1.0, Qt::white}}));
        GradientLibrary library(path());
        QString error;
        QVERIFY(library.Update(list, &error));
        for (int i = 0; i < 5000; i += 2)
            list[i] = FromGradientStops({{0.5, QColor::fromRgb(QRgb(i))}, {1.0, Qt::black}});

        QVERIFY(library.Update(list, &error));

        QCOMPARE(GradientLibrary(path()).GetList(), list);
    }

    void addedGradientsComeLast()
    {
        GradientLibrary library(path());
        QString error;

        QVERIFY(library.Add({{"Own", {{0.0, Qt::red}, {1.0, Qt::blue}}}}, &error));

        QCOMPARE(GradientLibrary(path()).GetGradients().size(), 25);
        QCOMPARE(GradientLibrary(path()).GetGradients().last().name, QString("Own"));
    }

    void stopsAtOnePlaceAreKeptApart()
    {
        GradientLibrary library(path());
        QString error;

        QVERIFY(library.Add({{"Edges",
                              {{0.0, Qt::red},
                               {0.0, Qt::blue},
                               {0.5, Qt::blue},
                               {0.5, Qt::cyan},
                               {0.5, Qt::green},
                               {1.0, Qt::green},
                               {1.0, Qt::white}}}},
                            &error));

        const QGradientStops stops = library.GetGradients().last().stops;
        for (int i = 1; i < stops.size(); ++i)
            QVERIFY(stops.at(i).first > stops.at(i - 1).first);
        QVERIFY(stops.first().first >= 0 && stops.last().first <= 1);
        QVERIFY(qAbs(stops.at(4).first - 0.5) < 1e-5);
        QCOMPARE(GradientLibrary(path()).GetGradients().last().stops, stops);
        QGradient shown;
        shown.setStops(stops);
        QCOMPARE(shown.stops(), stops);
    }

    void anEmptyListBringsTheShippedOnesBack()
    {
        GradientLibrary library(path());
        QString error;
        QVERIFY(library.Update(library.GetList(), &error));
        QVERIFY(QFile::exists(path()));

        QVERIFY(library.Update({}, &error));

        QVERIFY(library.GetGradients().isEmpty());
        QVERIFY(!QFile::exists(path()));
        QCOMPARE(GradientLibrary(path()).GetGradients().size(), 24);
        QVERIFY(GradientLibrary(path()).GetProblem().isEmpty());
    }

    void damagedStorageIsKeptAside_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("rubbish") << QByteArray("\0\1\2\3", 4);
        QTest::newRow("cut short") << QByteArray("<svg><linearGradient><stop offset='0'/><st");
        QTest::newRow("no gradient") << QByteArray("<svg/>");
    }
    void damagedStorageIsKeptAside()
    {
        QFETCH(QByteArray, text);
        write(text);

        GradientLibrary library(path());

        QCOMPARE(library.GetGradients().size(), 24);
        QVERIFY(library.GetProblem().contains("gradients-damaged-1.svg"));
        QCOMPARE(read("gradients-damaged-1.svg"), text);
        QVERIFY(!QFile::exists(path()));
        QString error;
        QVERIFY(library.Update(library.GetList(), &error));
        QVERIFY(GradientLibrary(path()).GetProblem().isEmpty());
    }

    void aSecondDamageDoesNotOverwriteTheFirst()
    {
        write("first");
        GradientLibrary first(path());
        write("second");

        GradientLibrary second(path());

        QVERIFY(second.GetProblem().contains("gradients-damaged-2.svg"));
        QCOMPARE(read("gradients-damaged-1.svg"), QByteArray("first"));
        QCOMPARE(read("gradients-damaged-2.svg"), QByteArray("second"));
    }

    void whatCannotBePutAsideIsLeftAlone()
    {
        // A folder of that name is no list, and a thousand names are taken.
        write("damaged");
        for (int i = 1; i <= 1000; ++i)
            QVERIFY(QDir(m_folder->path()).mkdir(QString("gradients-damaged-%1.svg").arg(i)));

        GradientLibrary library(path());

        QCOMPARE(library.GetGradients().size(), 24);
        QVERIFY(library.GetProblem().contains("gradients.svg"));
        QString error;
        QVERIFY(!library.Update(library.GetList(), &error));
        QVERIFY(!error.isEmpty());
        QCOMPARE(read("gradients.svg"), QByteArray("damaged"));
    }

    void aFolderThatIsNotThereIsMade()
    {
        GradientLibrary library(m_folder->filePath("deep/down/gradients.svg"));
        QString error;

        QVERIFY(library.Update(library.GetList(), &error));

        QVERIFY(QFile::exists(m_folder->filePath("deep/down/gradients.svg")));
    }

    void aPlaceThatCannotBeWrittenIsTold()
    {
        write("a file");
        GradientLibrary library(path() + "/below/gradients.svg");
        QString error;

        QVERIFY(!library.Add({{"Own", {{0.0, Qt::red}, {1.0, Qt::blue}}}}, &error));

        QVERIFY(error.contains("gradients.svg"));
        QCOMPARE(library.GetGradients().size(), 25);
    }

private:
    QString path() const { return m_folder->filePath("gradients.svg"); }
    void write(const QByteArray& text)
    {
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
    }
    QByteArray read(const QString& name)
    {
        QFile file(m_folder->filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

NV_TEST_MAIN(tst_GradientLibrary)
#include "tst_GradientLibrary.moc"
