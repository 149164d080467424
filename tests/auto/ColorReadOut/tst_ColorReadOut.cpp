// A colour as text.

#include "ColorReadOut.h"

#include <QColor>

#include "TestMain.h"

class tst_ColorReadOut : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void colorIsReadInNumbers_data()
    {
        QTest::addColumn<QColor>("color");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("opacity");
        QTest::newRow("opaque") << QColor(255, 128, 0) << "R: 255  G: 128  B: 0  100%"
                                << "100%";
        QTest::newRow("half") << QColor(1, 2, 3, 128) << "R: 1  G: 2  B: 3  50%"
                              << "50%";
        QTest::newRow("hardly seen") << QColor(1, 2, 3, 1) << "R: 1  G: 2  B: 3  0%"
                                     << "0%";
        QTest::newRow("transparent") << QColor(0, 0, 0, 0) << "R: 0  G: 0  B: 0  0%"
                                     << "0%";
    }
    void colorIsReadInNumbers()
    {
        QFETCH(const QColor, color);

        QTEST(ColorReadOut(color), "text");
        QTEST(OpacityReadOut(color), "opacity");
    }
};

NV_TEST_MAIN(tst_ColorReadOut)
#include "tst_ColorReadOut.moc"
