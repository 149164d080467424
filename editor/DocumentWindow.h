#pragma once

#include <QMdiSubWindow>

#include <memory>

class Document;
class NVDocumentView;

// A tab of the canvas area: one document and its view. It never closes by itself but asks to be closed.
class DocumentWindow : public QMdiSubWindow
{
    Q_OBJECT

public:
    explicit DocumentWindow(std::unique_ptr<Document> document, QWidget* parent = nullptr);
    ~DocumentWindow() override;

    Document* GetDocument() const;
    NVDocumentView* GetView() const;

Q_SIGNALS:
    // The person closed the tab.
    void CloseAsked(DocumentWindow* window);

protected:
    void closeEvent(QCloseEvent* event) override;

private Q_SLOTS:
    void OnStateChanged();

private:
    std::unique_ptr<Document> m_pDocument;
    NVDocumentView* m_pView;
};
