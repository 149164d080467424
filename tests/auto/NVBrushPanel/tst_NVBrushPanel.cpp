// The side panel of the brush: its form, and what its preview gets to show.

#include <QGridLayout>
#include <QTranslator>
#include <QtTest>

#include <memory>

#include "BrushPreview.h"
#include "IBrush.h"
#include "KXBrushSettings.h"
#include "NVBrushPanel.h"
#include "ProbeImage.h"
#include "TestMain.h"

namespace
{

class NamedBrush : public IBrush
{
public:
    QIcon& GetColoredIcon(const QColor&) override { return m_icon; }
    QString GetName() const override { return name; }
    BrushTip GetTip() const override { return tip; }

    QString name = "Test brush";
    BrushTip tip;

private:
    QIcon m_icon;
};

BrushPreview* PreviewOf(const NVBrushPanel& panel)
{
    return panel.findChild<BrushPreview*>("m_pPreview");
}

} // namespace

class tst_NVBrushPanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formHasItsTitleAndName();
    void parentAndFlagsAreTakenOver();
    void previewSpansTwoColumnsAboveASpacer();
    void titleIsTranslatedUnderTheFormsName();
    void brushReachesThePreview();
    void nullReachesThePreview();
    void slotTakesBothSignalsOfTheSettings();
    void brushMayDieBeforeThePanelIsDrawn();
    void noChildTakesTheFocus();
};

void tst_NVBrushPanel::formHasItsTitleAndName()
{
    const NVBrushPanel panel(nullptr, Qt::WindowFlags());

    QCOMPARE(panel.objectName(), QString("BrushPanel"));
    QCOMPARE(panel.windowTitle(), QString("Brush tool"));
    QVERIFY(panel.inherits("NVBrushPanel"));
}

void tst_NVBrushPanel::parentAndFlagsAreTakenOver()
{
    QWidget parent;
    const NVBrushPanel plain(&parent, Qt::WindowFlags());
    const NVBrushPanel floating(&parent, Qt::Tool);

    QCOMPARE(plain.parentWidget(), &parent);
    QVERIFY(!plain.isWindow());
    QCOMPARE(floating.windowType(), Qt::Tool);
}

void tst_NVBrushPanel::previewSpansTwoColumnsAboveASpacer()
{
    const NVBrushPanel panel(nullptr, Qt::WindowFlags());
    auto* grid = qobject_cast<QGridLayout*>(panel.layout());

    QVERIFY(grid);
    QCOMPARE(grid->objectName(), QString("gridLayout"));
    QCOMPARE(grid->count(), 2);
    QVERIFY(PreviewOf(panel));
    QCOMPARE(PreviewOf(panel)->minimumSize(), QSize(300, 90));
    int row = -1;
    int column = -1;
    int rowSpan = -1;
    int columnSpan = -1;
    grid->getItemPosition(grid->indexOf(PreviewOf(panel)), &row, &column, &rowSpan, &columnSpan);
    QCOMPARE(QList<int>({row, column, rowSpan, columnSpan}), QList<int>({0, 0, 1, 2}));
    grid->getItemPosition(1, &row, &column, &rowSpan, &columnSpan);
    QVERIFY(grid->itemAt(1)->spacerItem());
    QCOMPARE(row, 1);
}

void tst_NVBrushPanel::titleIsTranslatedUnderTheFormsName()
{
    class Shouting : public QTranslator
    {
    public:
        QString translate(const char* context, const char* text, const char*, int) const override
        {
            return qstrcmp(context, "BrushPanel") == 0 ? QString::fromUtf8(text).toUpper() : QString();
        }
        bool isEmpty() const override { return false; }
    } translator;
    QCoreApplication::installTranslator(&translator);
    const NVBrushPanel panel(nullptr, Qt::WindowFlags());
    QCoreApplication::removeTranslator(&translator);

    QCOMPARE(panel.windowTitle(), QString("BRUSH TOOL"));
    QCOMPARE(PreviewOf(panel)->accessibleName(), QString("BRUSH PREVIEW"));
}

void tst_NVBrushPanel::brushReachesThePreview()
{
    NVBrushPanel panel(nullptr, Qt::WindowFlags());
    panel.adjustSize();
    const ProbeImage before(&panel);
    NamedBrush brush;

    panel.SetBrush(&brush);

    QVERIFY(PreviewOf(panel)->accessibleDescription().startsWith("Test brush"));
    QVERIFY(ProbeImage(&panel).Differs(before));
}

void tst_NVBrushPanel::nullReachesThePreview()
{
    NVBrushPanel panel(nullptr, Qt::WindowFlags());
    panel.adjustSize();
    const ProbeImage empty(&panel);
    NamedBrush brush;
    panel.SetBrush(&brush);

    panel.SetBrush(nullptr);

    QCOMPARE(PreviewOf(panel)->accessibleDescription(), QString("No brush"));
    QVERIFY2(!ProbeImage(&panel).Differs(empty), "the face is not empty again");
}

void tst_NVBrushPanel::slotTakesBothSignalsOfTheSettings()
{
    NVBrushPanel panel(nullptr, Qt::WindowFlags());
    KXBrushSettings settings(nullptr);
    connect(&settings, &KXBrushSettings::CurrentBrushChanged, &panel, &NVBrushPanel::SetBrush);
    connect(&settings, &KXBrushSettings::BrushParameterChanged, &panel, &NVBrushPanel::SetBrush);

    settings.SetCurrentPreset(4);
    const QString chosen = PreviewOf(panel)->accessibleDescription();
    BrushTip tip = settings.GetCurrentBrush()->GetTip();
    tip.hardness = 0.25;
    settings.SetTip(tip);

    QVERIFY(chosen.startsWith(settings.GetPresetNames().at(4)));
    QVERIFY(PreviewOf(panel)->accessibleDescription().contains("25%"));
}

void tst_NVBrushPanel::brushMayDieBeforeThePanelIsDrawn()
{
    NVBrushPanel panel(nullptr, Qt::WindowFlags());
    auto brush = std::make_unique<NamedBrush>();
    panel.SetBrush(brush.get());

    brush.reset();

    QVERIFY(ProbeImage(&panel).ColorCount() > 2);
}

void tst_NVBrushPanel::noChildTakesTheFocus()
{
    const NVBrushPanel panel(nullptr, Qt::WindowFlags());

    QCOMPARE(panel.focusPolicy(), Qt::NoFocus);
    QCOMPARE(PreviewOf(panel)->focusPolicy(), Qt::NoFocus);
}

NV_TEST_MAIN(tst_NVBrushPanel)
#include "tst_NVBrushPanel.moc"
