#include "DocumentWindow.h"

#include <QCloseEvent>

#include "Document.h"
#include "NVDocumentView.h"
#include "SelectionOutline.h"

DocumentWindow::DocumentWindow(std::unique_ptr<Document> document, QWidget* parent)
    : QMdiSubWindow(parent),
      m_pDocument(std::move(document)),
      m_pView(new NVDocumentView(m_pDocument->GetModel()))
{
    // Files that are dropped on the canvas are for the main window.
    m_pView->setAcceptDrops(false);
    m_pView->viewport()->setAcceptDrops(false);
    m_pView->setAccessibleName(tr("Canvas"));
    new SelectionOutline(m_pDocument->GetPixels(), m_pView);
    setWidget(m_pView);
    // Its keys, such as Ctrl+W, are those of the main window's menus.
    setSystemMenu(nullptr);
    connect(m_pDocument.get(), &Document::StateChanged, this, &DocumentWindow::OnStateChanged);
    OnStateChanged();
}

DocumentWindow::~DocumentWindow()
{
    // The view shows the document's model.
    delete m_pView;
}

Document* DocumentWindow::GetDocument() const
{
    return m_pDocument.get();
}

NVDocumentView* DocumentWindow::GetView() const
{
    return m_pView;
}

void DocumentWindow::closeEvent(QCloseEvent* event)
{
    event->ignore();
    Q_EMIT CloseAsked(this);
}

void DocumentWindow::OnStateChanged()
{
    // A tab takes "&" for an accelerator, a window "[*]" for the place of its mark.
    QString title = m_pDocument->GetTitle();
    title.replace(QLatin1String("[*]"), QLatin1String("[*][*]"))
        .replace(QLatin1Char('&'), QLatin1String("&&"));
    setWindowTitle(title + QStringLiteral("[*]"));
    setWindowModified(m_pDocument->IsModified());
}
