#include "BatchListPage.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSaveFile>
#include <QTreeView>
#include <QtMath>

#include "BatchRowModel.h"

namespace
{

// For the width of the first column.
const int RowsMeasured = 50;
// Of the column of places, in letters, until somebody drags it.
const int PlaceLetters = 20;
// Of the chosen row's text.
const int LinesOfRow = 4;

} // namespace

BatchListPage::BatchListPage(const QStringList& headings, QWidget* parent)
    : QWidget(parent),
      m_pSummary(new QLabel(this)),
      m_pView(new QTreeView(this)),
      m_pModel(new BatchRowModel(headings, this)),
      m_pRow(new QPlainTextEdit(this)),
      m_pCopy(new QPushButton(tr("Cop&y"), this)),
      m_pSave(new QPushButton(tr("Sa&ve As..."), this))
{
    m_pSummary->setTextFormat(Qt::PlainText);
    m_pSummary->setWordWrap(true);
    m_pSummary->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_pRow->setObjectName(QStringLiteral("m_pRow"));
    m_pRow->setAccessibleName(tr("The chosen row in full"));
    m_pRow->setReadOnly(true);
    m_pRow->setTabChangesFocus(true);
    m_pRow->setFixedHeight(LinesOfRow * fontMetrics().lineSpacing() + 2 * m_pRow->frameWidth() +
                           qCeil(2 * m_pRow->document()->documentMargin()));
    m_pView->setModel(m_pModel);
    m_pView->setRootIsDecorated(false);
    m_pView->setUniformRowHeights(true);
    m_pView->setAllColumnsShowFocus(true);
    QHeaderView* header = m_pView->header();
    header->setResizeContentsPrecision(RowsMeasured);
    header->setStretchLastSection(true);
    if (headings.size() > 2)
        header->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    if (headings.size() > 1)
        header->resizeSection(headings.size() - 2, PlaceLetters * fontMetrics().averageCharWidth());
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_pCopy);
    buttons->addWidget(m_pSave);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_pSummary);
    layout->addWidget(m_pView);
    layout->addWidget(m_pRow);
    layout->addLayout(buttons);
    connect(m_pView->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &BatchListPage::ShowRow);
    connect(m_pCopy, &QPushButton::clicked, this, &BatchListPage::Copy);
    connect(m_pSave, &QPushButton::clicked, this, &BatchListPage::SaveAsked);
    SetContent(Content());
}

void BatchListPage::SetContent(const Content& content)
{
    m_text = content.text;
    m_pSummary->setText(content.summary);
    m_pView->setAccessibleName(content.summary);
    m_pModel->SetRows(content.count, content.row);
    m_pView->setCurrentIndex(m_pModel->index(0, 0));
    ShowRow();
    m_pCopy->setEnabled(bool(m_text));
    m_pSave->setEnabled(bool(m_text));
}

QString BatchListPage::GetText() const
{
    return m_text ? m_text() : QString();
}

bool BatchListPage::SaveText(const QString& path, QString* error) const
{
    QSaveFile file(path);
    const QByteArray bytes = GetText().toUtf8();
    const bool ok = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
    if (!ok && error)
        *error = file.errorString();
    return ok;
}

void BatchListPage::Copy()
{
    QGuiApplication::clipboard()->setText(GetText());
}

void BatchListPage::ShowRow()
{
    const QModelIndex current = m_pView->currentIndex();
    QStringList columns;
    for (int column = 0; column < m_pModel->columnCount(); ++column)
        columns += current.sibling(current.row(), column).data().toString();
    m_pRow->setVisible(current.isValid());
    m_pRow->setPlainText(columns.join(QLatin1Char('\n')));
}
