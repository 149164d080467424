// The style with fixed measures: the same numbers everywhere, and nothing left of it after its scope.

#include "FixedMetricsStyle.h"
#include "TestMain.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QStyle>

class tst_FixedMetricsStyle : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void metricsAreFixed();
    void layoutUsesThem();
    void fontHasAFixedPixelSize();
    void scopeRestoresStyleAndFont();
    void scaledDesktopChangesNothing();
};

void tst_FixedMetricsStyle::metricsAreFixed()
{
    const FixedMetricsStyle style;
    QCOMPARE(style.pixelMetric(QStyle::PM_LayoutLeftMargin), 9);
    QCOMPARE(style.pixelMetric(QStyle::PM_SpinBoxFrameWidth), 3);
    QCOMPARE(style.pixelMetric(QStyle::PM_ScrollBarExtent), 14);
}

void tst_FixedMetricsStyle::layoutUsesThem()
{
    const FixedMetricsStyle::Scope fixed;
    QWidget window;
    auto* layout = new QHBoxLayout(&window);
    for (int i = 0; i < 2; ++i)
    {
        auto* box = new QWidget;
        box->setFixedSize(40, 20);
        layout->addWidget(box);
    }
    QCOMPARE(window.sizeHint(), QSize(9 + 40 + 6 + 40 + 9, 9 + 20 + 9));
}

void tst_FixedMetricsStyle::fontHasAFixedPixelSize()
{
    const FixedMetricsStyle::Scope fixed;
    QPushButton button("text");
    QCOMPARE(button.font().pixelSize(), 12);
    QCOMPARE(button.font().family(), FixedMetricsStyle::Font().family());
}

void tst_FixedMetricsStyle::scopeRestoresStyleAndFont()
{
    const QString style = QApplication::style()->objectName();
    const QFont font = QApplication::font();
    {
        const FixedMetricsStyle::Scope fixed;
        QVERIFY(qobject_cast<FixedMetricsStyle*>(QApplication::style()));
    }
    QVERIFY(!qobject_cast<FixedMetricsStyle*>(QApplication::style()));
    QCOMPARE(QApplication::style()->objectName(), style);
    QCOMPARE(QApplication::font(), font);
}

void tst_FixedMetricsStyle::scaledDesktopChangesNothing()
{
    const FixedMetricsStyle style;
    QWidget large;
    QFont font;
    font.setPixelSize(48);
    large.setFont(font);
    QCOMPARE(style.pixelMetric(QStyle::PM_SmallIconSize, nullptr, &large), 16);
}

NV_TEST_MAIN(tst_FixedMetricsStyle)

#include "tst_FixedMetricsStyle.moc"
