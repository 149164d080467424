// The frame on the canvas while the dialog is open: it follows the dialog, and goes with it.

#include "AutoCropPreview.h"

#include <QGraphicsScene>
#include <QPainter>
#include <QRadioButton>
#include <QSpinBox>

#include "BusyThreads.h"
#include "NVAutoCrop.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

const QRect Spot(50, 40, 100, 60);

QImage Picture()
{
    QImage image = PlainPicture();
    QPainter(&image).fillRect(Spot, Qt::red);
    return image;
}

} // namespace

class tst_AutoCropPreview : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_document = std::make_unique<Document>(Picture(), QString(), "Picture");
        m_view = std::make_unique<NVDocumentView>(m_document->GetModel());
        m_dialog = std::make_unique<NVAutoCrop>(nullptr);
    }
    void cleanup()
    {
        m_preview.reset();
        m_dialog.reset();
        m_view.reset();
        m_document.reset();
    }

    void theDialogIsReadAsItStands()
    {
        m_dialog->SetMode(NVAutoCrop::ModeLeftTop);
        m_dialog->SetArea(NVAutoCrop::AreaTop | NVAutoCrop::AreaRight);
        m_dialog->SetTolerance(7);

        const AutoCropSettings settings = SettingsOf(m_dialog.get());

        QCOMPARE(settings.background, AutoCropSettings::LeftTop);
        QCOMPARE(settings.sides, int(AutoCropSettings::Top | AutoCropSettings::Right));
        QCOMPARE(settings.tolerance, 7);
    }

    void theFrameIsFoundAtOnceAndWithEachChange()
    {
        start();
        QTRY_COMPARE(m_preview->GetFrame(), Spot);

        m_dialog->findChild<QSpinBox*>("m_pTolerance")->setValue(255);
        QTRY_COMPARE(m_preview->GetFrame(), QRect());
        m_dialog->SetTolerance(0);
        QTRY_COMPARE(m_preview->GetFrame(), Spot);
        m_dialog->SetMode(NVAutoCrop::ModeTransparent);
        QTRY_COMPARE(m_preview->GetFrame(), QRect(0, 0, 300, 200));
        m_dialog->SetMode(NVAutoCrop::ModeBottomRight);
        m_dialog->SetArea(NVAutoCrop::AreaLeft);
        QTRY_COMPARE(m_preview->GetFrame(), QRect(QPoint(50, 0), QPoint(299, 199)));
    }

    void onlyTheLastChangeCounts()
    {
        BusyThreads busy;
        start();
        SignalLog log(m_preview.get());
        for (int tolerance = 0; tolerance < 255; ++tolerance)
            m_dialog->SetTolerance(tolerance);
        QVERIFY(m_preview->IsSearching());

        busy.Open();

        QTRY_COMPARE(m_preview->GetFrame(), Spot);
        QCOMPARE(log.Count("Found"), 1);
        QVERIFY(!m_preview->IsSearching());
    }

    void itGoesWithItsFrame()
    {
        start();
        QTRY_COMPARE(m_preview->GetFrame(), Spot);
        QCOMPARE(m_view->scene()->items().size(), 1);

        m_preview.reset();

        QVERIFY(m_view->scene()->items().isEmpty());
    }

    void itMayGoWhileItSearches()
    {
        const BusyThreads busy;
        start();

        m_preview.reset();

        QVERIFY(m_view->scene()->items().isEmpty());
    }

    void theViewMayGoFirst()
    {
        start();
        QTRY_COMPARE(m_preview->GetFrame(), Spot);

        m_view.reset();
        SignalLog log(m_preview.get());
        m_dialog->SetTolerance(3);

        QTRY_COMPARE(log.Count("Found"), 1);
        QCOMPARE(m_preview->GetFrame(), QRect());
    }

private:
    void start() { m_preview = std::make_unique<AutoCropPreview>(m_dialog.get(), m_view.get(), Picture()); }

    std::unique_ptr<Document> m_document;
    std::unique_ptr<NVDocumentView> m_view;
    std::unique_ptr<NVAutoCrop> m_dialog;
    std::unique_ptr<AutoCropPreview> m_preview;
};

NV_TEST_MAIN(tst_AutoCropPreview)

#include "tst_AutoCropPreview.moc"
