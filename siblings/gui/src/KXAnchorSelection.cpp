#include "KXAnchorSelection.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QButtonGroup>
#include <QEvent>
#include <QGridLayout>

#include "AnchorCell_p.h"

namespace
{

const int Columns = 3;
const int CellCount = Columns * Columns;

QPoint PlaceOf(int state)
{
    return QPoint(state % Columns, state / Columns);
}

QAccessibleInterface* CreateInterface(const QString& className, QObject* object)
{
    if (className == QLatin1String("KXAnchorSelection") && object && object->isWidgetType())
        return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Grouping);
    return nullptr;
}

} // namespace

KXAnchorSelection::KXAnchorSelection(QWidget* parent) : QWidget(parent), m_pCells(new QButtonGroup(this))
{
    QAccessible::installFactory(CreateInterface);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    // Else a caption would not pass the focus on.
    setFocusPolicy(Qt::StrongFocus);
    // The cells are places of a picture, which is not mirrored.
    setLayoutDirection(Qt::LeftToRight);
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(1);
    AddCells(layout);
    NameCells();
    connect(m_pCells, &QButtonGroup::idToggled, this, &KXAnchorSelection::OnCellToggled);
    SetState(Center);
}

KXAnchorSelection::~KXAnchorSelection() = default;

KXAnchorSelection::State KXAnchorSelection::GetState() const
{
    return static_cast<State>(m_pCells->checkedId());
}

bool KXAnchorSelection::IsShrinkHorizontal() const
{
    return m_shrinkHorizontal;
}

bool KXAnchorSelection::IsShrinkVertical() const
{
    return m_shrinkVertical;
}

QPoint KXAnchorSelection::ArrowOf(State cell, State anchor, bool shrinkHorizontal, bool shrinkVertical)
{
    const QPoint away = PlaceOf(cell) - PlaceOf(anchor);
    if (qAbs(away.x()) > 1 || qAbs(away.y()) > 1)
        return QPoint();
    return QPoint(shrinkHorizontal ? -away.x() : away.x(), shrinkVertical ? -away.y() : away.y());
}

void KXAnchorSelection::SetState(State state)
{
    if (QAbstractButton* cell = m_pCells->button(state))
        cell->setChecked(true);
}

void KXAnchorSelection::ShrinkHorizontal(bool shrink)
{
    if (shrink == m_shrinkHorizontal)
        return;
    m_shrinkHorizontal = shrink;
    TurnArrows();
}

void KXAnchorSelection::ShrinkVertical(bool shrink)
{
    if (shrink == m_shrinkVertical)
        return;
    m_shrinkVertical = shrink;
    TurnArrows();
}

void KXAnchorSelection::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        NameCells();
}

void KXAnchorSelection::OnCellToggled(int id, bool checked)
{
    QAbstractButton* cell = m_pCells->button(id);
    cell->setFocusPolicy(checked ? Qt::StrongFocus : Qt::ClickFocus);
    if (!checked)
        return;
    setFocusProxy(cell);
    TurnArrows();
    Q_EMIT StateChanged(static_cast<State>(id));
}

void KXAnchorSelection::AddCells(QGridLayout* layout)
{
    for (int state = 0; state < CellCount; ++state)
    {
        auto* cell = new AnchorCell(this);
        cell->setFocusPolicy(Qt::ClickFocus);
        m_pCells->addButton(cell, state);
        layout->addWidget(cell, PlaceOf(state).y(), PlaceOf(state).x());
    }
}

void KXAnchorSelection::NameCells()
{
    const QString names[CellCount] = {tr("Top left"),    tr("Top"),    tr("Top right"),
                                      tr("Left"),        tr("Center"), tr("Right"),
                                      tr("Bottom left"), tr("Bottom"), tr("Bottom right")};
    for (int state = 0; state < CellCount; ++state)
        m_pCells->button(state)->setAccessibleName(names[state]);
}

void KXAnchorSelection::TurnArrows()
{
    const State anchor = GetState();
    for (int state = 0; state < CellCount; ++state)
    {
        const QPoint arrow = ArrowOf(static_cast<State>(state), anchor, m_shrinkHorizontal, m_shrinkVertical);
        static_cast<AnchorCell*>(m_pCells->button(state))->SetArrow(arrow);
    }
}
