#include "RefineDialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>

#include "NVSpinBox.h"
#include "SelectionMask.h"
#include "SelectionOutline.h"

const int RefineDialog::MaxSmooth = 100;
const int RefineDialog::MaxGrowth = 250;
const int RefineDialog::MaxFeather = 250;

RefineDialog::RefineDialog(const QImage& mask, SelectionOutline* outline, QWidget* parent)
    : KXDialog(parent), m_mask(mask), m_pOutline(outline), m_refined(mask)
{
    setWindowTitle(tr("Refine Selection"));
    auto* form = new QFormLayout(Content());
    m_pSmooth = AddBox(form, tr("&Smooth:"), QStringLiteral("m_pSmooth"), MaxSmooth);
    m_pGrow = AddBox(form, tr("&Grow:"), QStringLiteral("m_pGrow"), MaxGrowth);
    m_pShrink = AddBox(form, tr("S&hrink:"), QStringLiteral("m_pShrink"), MaxGrowth);
    m_pFeather = AddBox(form, tr("&Feather:"), QStringLiteral("m_pFeather"), MaxFeather);
    m_pNote = new QLabel(Content());
    m_pNote->setObjectName(QStringLiteral("m_pNote"));
    m_pNote->setWordWrap(true);
    m_pNote->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    form->addRow(m_pNote);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, Content());
    m_pOk = buttons->button(QDialogButtonBox::Ok);
    m_pOk->setDefault(true);
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &RefineDialog::OnOk);
    connect(buttons, &QDialogButtonBox::rejected, this, &KXDialog::Reject);
    connect(&m_work, &BackgroundWork::Done, this, &RefineDialog::OnRefined);
    connect(&m_work, &BackgroundWork::Lasts, this, &RefineDialog::OnLasts);
    ShowNote(QString());
    m_pSmooth->setFocus();
    m_pSmooth->selectAll();
}

RefineDialog::~RefineDialog()
{
    if (m_pOutline)
        m_pOutline->ShowSelection();
}

QImage RefineDialog::GetMask() const
{
    return m_refined;
}

bool RefineDialog::IsWorking() const
{
    return m_work.IsRunning();
}

void RefineDialog::OnChanged()
{
    MaskRefinement refinement;
    refinement.smooth = m_pSmooth->value();
    refinement.grow = m_pGrow->value();
    refinement.shrink = m_pShrink->value();
    refinement.feather = m_pFeather->value();
    m_pOutcome = std::make_shared<QImage>();
    m_work.Start([mask = m_mask, refinement, outcome = m_pOutcome](const std::atomic<bool>& cancelled)
                 { *outcome = RefineMask(mask, refinement, [&cancelled] { return cancelled.load(); }); });
}

void RefineDialog::OnRefined()
{
    m_refined = *m_pOutcome;
    m_pOutcome.reset();
    if (m_pOutline)
        m_pOutline->ShowMask(m_refined);
    m_pOk->setEnabled(!m_refined.isNull());
    ShowNote(m_refined.isNull() ? tr("Nothing would be left of the selection.") : QString());
    Q_EMIT Refined();
    if (m_isAccepted && !m_refined.isNull())
        Accept();
    m_isAccepted = false;
}

void RefineDialog::OnLasts()
{
    ShowNote(tr("The selection is being refined."));
}

void RefineDialog::OnOk()
{
    m_isAccepted = m_work.IsRunning();
    if (!m_isAccepted)
        Accept();
}

NVSpinBox* RefineDialog::AddBox(QFormLayout* form, const QString& label, const QString& name, int maximum)
{
    auto* box = new NVSpinBox(Content());
    box->setObjectName(name);
    box->setRange(0, maximum);
    box->setSuffix(tr(" px"));
    connect(box, qOverload<int>(&QSpinBox::valueChanged), this, &RefineDialog::OnChanged);
    form->addRow(label, box);
    return box;
}

void RefineDialog::ShowNote(const QString& text)
{
    // The buttons stay where they are when a shorter note follows.
    if (m_pNote->isVisible())
        m_pNote->setMinimumHeight(m_pNote->height());
    m_pNote->setText(text.isEmpty() ? tr("The line on the picture shows what will be selected.") : text);
}
