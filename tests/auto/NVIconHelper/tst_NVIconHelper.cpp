// Icons with a faded picture for disabled controls.

#include "NVIconHelper.h"
#include "TestMain.h"

#include <QPixmap>
#include <QToolButton>

namespace
{
QPixmap filled(const QSize& size, const QColor& color)
{
    QPixmap pixmap(size);
    pixmap.fill(color);
    return pixmap;
}

QImage shown(const QIcon& icon, QIcon::Mode mode, const QSize& size)
{
    return icon.pixmap(size, mode).toImage().convertToFormat(QImage::Format_ARGB32);
}
} // namespace

class tst_NVIconHelper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nullPixmapGivesNullIcon();
    void enabledIconShowsThePixmapAsItIs();
    void disabledIconIsGreyAndFaded();
    void transparentPixelsStayTransparent();
    void halfTransparentPixelsFadeFurther();
    void onePixelWillDo();
    void finePixmapKeepsAllItsPixels();
    void buttonShowsTheFadedPictureWhenDisabled();
};

void tst_NVIconHelper::nullPixmapGivesNullIcon()
{
    QVERIFY(NVIconHelper::DisabledIcon(QPixmap()).isNull());
}

void tst_NVIconHelper::enabledIconShowsThePixmapAsItIs()
{
    const QPixmap pixmap = filled(QSize(8, 6), QColor(200, 40, 10));

    const QIcon icon = NVIconHelper::DisabledIcon(pixmap);

    QCOMPARE(shown(icon, QIcon::Normal, pixmap.size()),
             pixmap.toImage().convertToFormat(QImage::Format_ARGB32));
}

void tst_NVIconHelper::disabledIconIsGreyAndFaded()
{
    const QIcon icon = NVIconHelper::DisabledIcon(filled(QSize(8, 6), QColor(200, 40, 10)));

    const QColor color = shown(icon, QIcon::Disabled, QSize(8, 6)).pixelColor(4, 3);

    QCOMPARE(color.red(), color.green());
    QCOMPARE(color.green(), color.blue());
    QVERIFY(qAbs(color.red() - qGray(200, 40, 10)) <= 2);
    QCOMPARE(color.alpha(), 102);
}

void tst_NVIconHelper::transparentPixelsStayTransparent()
{
    const QIcon icon = NVIconHelper::DisabledIcon(filled(QSize(4, 4), Qt::transparent));

    QCOMPARE(shown(icon, QIcon::Disabled, QSize(4, 4)).pixelColor(1, 1).alpha(), 0);
}

void tst_NVIconHelper::halfTransparentPixelsFadeFurther()
{
    const QIcon icon = NVIconHelper::DisabledIcon(filled(QSize(4, 4), QColor(0, 0, 0, 100)));

    QCOMPARE(shown(icon, QIcon::Disabled, QSize(4, 4)).pixelColor(1, 1).alpha(), 40);
}

void tst_NVIconHelper::onePixelWillDo()
{
    const QIcon icon = NVIconHelper::DisabledIcon(filled(QSize(1, 1), Qt::white));

    QCOMPARE(icon.actualSize(QSize(1, 1)), QSize(1, 1));
    QCOMPARE(shown(icon, QIcon::Disabled, QSize(1, 1)).pixelColor(0, 0).alpha(), 102);
}

void tst_NVIconHelper::finePixmapKeepsAllItsPixels()
{
    QPixmap pixmap = filled(QSize(48, 48), Qt::blue);
    pixmap.setDevicePixelRatio(2.0);

    const QIcon icon = NVIconHelper::DisabledIcon(pixmap);

    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Disabled})
    {
        QCOMPARE(icon.availableSizes(mode), QIcon(pixmap).availableSizes());
        QCOMPARE(icon.pixmap(QSize(48, 48), mode).size(), QSize(48, 48));
    }
}

void tst_NVIconHelper::buttonShowsTheFadedPictureWhenDisabled()
{
    QToolButton button;
    button.setAutoRaise(true);
    button.setIconSize(QSize(24, 24));
    button.setIcon(NVIconHelper::DisabledIcon(filled(QSize(24, 24), Qt::red)));
    button.resize(40, 40);
    const QColor enabled = button.grab().toImage().pixelColor(20, 20);

    button.setEnabled(false);

    const QColor disabled = button.grab().toImage().pixelColor(20, 20);
    QCOMPARE(enabled, QColor(Qt::red));
    QVERIFY2(disabled.saturation() < 10, qPrintable(disabled.name()));
}

NV_TEST_MAIN(tst_NVIconHelper)

#include "tst_NVIconHelper.moc"
