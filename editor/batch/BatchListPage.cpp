#include "BatchListPage.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSaveFile>
#include <QTreeView>

#include "BatchRowModel.h"

namespace
{

// For the width of the first column.
const int RowsMeasured = 50;
// Of the column of places, in letters, until somebody drags it.
const int PlaceLetters = 20;

} // namespace

BatchListPage::BatchListPage(const QStringList& headings, QWidget* parent)
    : QWidget(parent),
      m_pSummary(new QLabel(this)),
      m_pView(new QTreeView(this)),
      m_pModel(new BatchRowModel(headings, this)),
      m_pCopy(new QPushButton(tr("Cop&y"), this)),
      m_pSave(new QPushButton(tr("Sa&ve As..."), this))
{
    m_pSummary->setTextFormat(Qt::PlainText);
    m_pSummary->setWordWrap(true);
    m_pSummary->setTextInteractionFlags(Qt::TextSelectableByMouse);
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
    layout->addLayout(buttons);
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
