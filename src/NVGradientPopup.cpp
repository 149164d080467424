#include "NVGradientPopup.h"

#include <QKeyEvent>
#include <QLayout>
#include <QPointer>
#include <QStandardItemModel>

#include "ConnectionCut_p.h"
#include "GradientRows_p.h"
#include "KXMdiArea.h"
#include "NVGradientEditor.h"
#include "OutliveParent_p.h"
#include "ui_GradientPopup.h"

NVGradientPopup::NVGradientPopup(QWidget* parent) : KXPopupWindow(parent), m_pUi(new Ui_GradientPopup)
{
    m_pUi->setupUi(GetContent());
    // A picture that is taken of the bar lays out its hidden popup too: the size of the form must count by
    // then.
    resize(GetContent()->size().grownBy(layout()->contentsMargins()));
    SetUpGradientRows(m_pUi->m_pGradientList);
    connect(m_pUi->m_pGradientList->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &NVGradientPopup::OnCurrentChanged);
    connect(m_pUi->m_pEdit, &QPushButton::clicked, this, &NVGradientPopup::OnEdit);
    connect(m_pUi->m_pNew, &QPushButton::clicked, this, &NVGradientPopup::OnNew);
}

NVGradientPopup::~NVGradientPopup()
{
    // The rows die later, and would tell of it.
    m_pUi->m_pGradientList->selectionModel()->disconnect(this);
    delete m_pUi;
}

int NVGradientPopup::GetGradientCount() const
{
    return m_gradients.size();
}

QList<NVGradientStop> NVGradientPopup::GetGradient(int index) const
{
    return m_gradients.value(index);
}

int NVGradientPopup::GetCurrentIndex() const
{
    return m_pUi->m_pGradientList->currentIndex().row();
}

void NVGradientPopup::Load(const QList<QList<NVGradientStop>>& gradients)
{
    m_gradients = gradients;
    LoadGradientRows(GradientRows(m_pUi->m_pGradientList), m_gradients);
    if (!m_gradients.isEmpty())
        SetCurrentIndex(0);
}

void NVGradientPopup::SetGradient(int index, const QList<NVGradientStop>& gradient)
{
    CheckGradientIndex(index, m_gradients.size(), "src/NVGradientPopup", 141);
    m_gradients[index] = gradient;
    SetGradientRow(GradientRows(m_pUi->m_pGradientList), index, ToGradientStops(gradient));
}

void NVGradientPopup::SetCurrentIndex(int row)
{
    m_pUi->m_pGradientList->setCurrentIndex(GradientRows(m_pUi->m_pGradientList)->index(row, 0));
}

// Not the base's: it would hold Escape back.
void NVGradientPopup::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        hide();
    QWidget::keyPressEvent(event); // NOLINT(bugprone-parent-virtual-call)
}

void NVGradientPopup::OnCurrentChanged(const QModelIndex& current, const QModelIndex&)
{
    Q_EMIT CurrentIndexChanged(GetCurrentIndex());
    m_pUi->m_pEdit->setEnabled(current.isValid());
}

void NVGradientPopup::OnEdit()
{
    RunEditor(Start::OnCurrentGradient);
}

void NVGradientPopup::OnNew()
{
    RunEditor(Start::OnNewGradient);
}

void NVGradientPopup::OnSave()
{
    const auto* editor = qobject_cast<NVGradientEditor*>(sender());
    if (!editor)
        return;
    QListView* list = m_pUi->m_pGradientList;
    {
        const ConnectionCut cut(list->selectionModel(), &QItemSelectionModel::currentChanged, this,
                                &NVGradientPopup::OnCurrentChanged);
        Load(editor->GetGradients());
        // With no current row first, the one below is a change even where its number is the old one. By that
        // one signal the bar draws a gradient anew that was edited in its place.
        list->setCurrentIndex(GradientRows(list)->index(-1, 0));
    }
    SetCurrentIndex(editor->GetCurrentIndex());
    m_pUi->m_pEdit->setEnabled(list->currentIndex().isValid());
    Q_EMIT Save();
}

void NVGradientPopup::RunEditor(Start start)
{
    const QPointer<NVGradientPopup> self(this);
    NVGradientEditor editor(KXMdiArea::MainWindow());
    OutliveParent(&editor);
    connect(&editor, &NVGradientEditor::Save, this, &NVGradientPopup::OnSave);
    editor.Load(m_gradients);
    editor.SetCurrentIndex(GetCurrentIndex());
    if (start == Start::OnNewGradient)
        editor.NewGradient();
    editor.Exec();
    if (self)
        Q_EMIT ShowPopup();
}
