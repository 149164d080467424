#include "WandTool.h"

#include <QGuiApplication>
#include <QSettings>

#include <utility>

#include "Document.h"
#include "KXDocumentInterface.h"
#include "LayerSample.h"
#include "MemoryRoom.h"
#include "NVMagicWandToolbar.h"
#include "SelectCommand.h"
#include "SelectionBar.h"
#include "SelectionMask.h"

namespace
{

// A document of fewer pixels is searched before anybody notices.
const qint64 QuickPixels = 2'000'000;
// For the work that is almost done at the next click.
const int PatienceMs = 250;
const int TickMs = 100;

const QLatin1String ToleranceKey("wand/tolerance");
const QLatin1String AllLayersKey("wand/allLayers");
const QLatin1String ContiguousKey("wand/contiguous");

} // namespace

// What the work needs, and what it gives.
struct WandTool::Search
{
    // It is not done when the flag ended it, or memory was short.
    void Run(const std::atomic<bool>& cancelled)
    {
        const auto goOn = [&](int done)
        {
            percent = done;
            return !cancelled;
        };
        QImage found = WandSelection(picture, seed, settings, goOn);
        picture = QImage();
        if (cancelled || found.isNull())
            return;
        mask = CombineMasks(before, std::move(found), state);
        isDone = true;
    }

    QImage picture;
    QPoint seed;
    WandSettings settings;
    QImage before;
    int state = ReplaceSelection;
    // The selection afterwards.
    QImage mask;
    bool isDone = false;
    std::atomic<int> percent{0};
};

WandTool::WandTool(QSettings* settings, QObject* parent) : Tool(parent), m_pSettings(settings)
{
    m_tick.setInterval(TickMs);
    connect(&m_tick, &QTimer::timeout, this, &WandTool::OnLasts);
    connect(&m_work, &BackgroundWork::Done, this, &WandTool::OnFound);
    connect(&m_work, &BackgroundWork::Lasts, this, &WandTool::OnLasts);
}

WandTool::~WandTool()
{
    WandTool::Cancel();
}

NVMagicWandToolbar* WandTool::GetWandBar()
{
    return static_cast<NVMagicWandToolbar*>(GetBar());
}

bool WandTool::IsSelecting() const
{
    return m_work.IsRunning();
}

QString WandTool::GetName() const
{
    return tr("Magic Wand");
}

QString WandTool::GetPictureName() const
{
    return QStringLiteral("tool-wand");
}

QKeySequence WandTool::GetKey() const
{
    return Qt::Key_W;
}

void WandTool::StoreValues()
{
    const NVMagicWandToolbar* bar = GetWandBar();
    m_pSettings->setValue(ToleranceKey, bar->GetTolerance());
    m_pSettings->setValue(AllLayersKey, bar->IsSampleAllLayers());
    m_pSettings->setValue(ContiguousKey, bar->IsContiguous());
}

bool WandTool::Cancel()
{
    if (!m_work.IsRunning())
        return false;
    m_work.Cancel();
    EndSearch();
    Q_EMIT Message(tr("Selecting was cancelled."));
    return true;
}

void WandTool::Finish()
{
    if (!m_work.IsRunning())
        return;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    m_work.Wait();
    QGuiApplication::restoreOverrideCursor();
}

QWidget* WandTool::CreateBar()
{
    auto* bar = new NVMagicWandToolbar(nullptr);
    RestoreValues(bar);
    connect(&m_keys, &HeldKeys::Changed, bar, [bar](Qt::KeyboardModifiers held) { ShowHeldKeys(bar, held); });
    return bar;
}

void WandTool::UpdateBarTheme(QWidget* bar)
{
    SetBarPicture(bar, QStringLiteral("m_pPicture"), QStringLiteral("tool-bar-wand"));
    UpdateSelectionButtons(bar);
}

void WandTool::CreateShortcuts()
{
    m_keys.SetOn(true);
}

void WandTool::ReleaseShortcuts()
{
    m_keys.SetOn(false);
}

void WandTool::Equip(NVDocumentView* view)
{
    view->SetToolCursor(Qt::CrossCursor);
}

void WandTool::Pressed(const CanvasPoint& point)
{
    m_keys.Take(point.modifiers);
    if (point.button != Qt::LeftButton)
        return;
    if (m_work.IsRunning() && !m_work.Wait(PatienceMs))
    {
        OnLasts();
        return;
    }
    const KXDocumentInterface* pixels = GetDocument()->GetPixels();
    const QPoint seed = PixelAt(point.position);
    if (!pixels->GetRect().contains(seed))
        return;
    StoreValues();
    m_pSearch = CreateSearch(seed);
    if (qint64(pixels->GetSize().width()) * pixels->GetSize().height() > QuickPixels)
    {
        StartSearch();
        return;
    }
    m_pSearch->Run(false);
    OnFound();
}

void WandTool::Moved(const CanvasPoint& point)
{
    m_keys.Take(point.modifiers);
}

void WandTool::OnFound()
{
    const bool isDone = m_pSearch->isDone;
    if (isDone && GetDocument())
        PushSelection(GetDocument(), tr("Magic Wand"), m_pSearch->mask);
    EndSearch();
    if (!isDone)
        Q_EMIT Message(NoMemoryForSelection());
}

void WandTool::OnLasts()
{
    m_tick.start();
    Q_EMIT Message(tr("The picture is being searched: %1 %. Escape takes it back.").arg(m_pSearch->percent));
}

void WandTool::RestoreValues(NVMagicWandToolbar* bar)
{
    const WandSettings usual;
    bar->SetTolerance(m_pSettings->value(ToleranceKey, usual.tolerance).toInt());
    bar->SetSampleAllLayers(m_pSettings->value(AllLayersKey, true).toBool());
    bar->SetContiguous(m_pSettings->value(ContiguousKey, usual.contiguous).toBool());
}

std::shared_ptr<WandTool::Search> WandTool::CreateSearch(const QPoint& seed)
{
    const NVMagicWandToolbar* bar = GetWandBar();
    const KXDocumentInterface* pixels = GetDocument()->GetPixels();
    auto search = std::make_shared<Search>();
    search->picture = SampledLayers(pixels, bar->IsSampleAllLayers());
    if (search->picture.isNull())
        search->picture = pixels->GetLayer(pixels->GetCurrentLayer()).image;
    search->seed = seed;
    search->settings = {bar->GetTolerance(), bar->IsContiguous()};
    search->before = pixels->GetSelectionMask();
    search->state = bar->GetState();
    return search;
}

void WandTool::StartSearch()
{
    SetEscapeLive(true);
    GetView()->SetToolCursor(Qt::BusyCursor);
    m_work.Start([search = m_pSearch](const std::atomic<bool>& cancelled) { search->Run(cancelled); });
}

void WandTool::EndSearch()
{
    m_tick.stop();
    m_pSearch.reset();
    SetEscapeLive(false);
    if (GetView())
        GetView()->SetToolCursor(Qt::CrossCursor);
    Q_EMIT SelectionEnded();
}
