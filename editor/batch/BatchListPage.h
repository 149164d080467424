#pragma once

#include <QStringList>
#include <QWidget>

#include <functional>

class QLabel;
class QModelIndex;
class QPlainTextEdit;
class QPushButton;
class BatchRowModel;
class QTreeView;

// A summary and a list of rows, which can be copied and saved as text. The row that is chosen, the first one
// until somebody chooses, is shown in full below.
class BatchListPage : public QWidget
{
    Q_OBJECT

public:
    // The headings of the columns. The last column has the room that the others leave.
    explicit BatchListPage(const QStringList& headings, QWidget* parent = nullptr);

    // What the page shows. The functions are called when somebody wants to see a row or to have the text.
    struct Content
    {
        QString summary;
        int count = 0;
        std::function<QStringList(int row)> row;
        // What is copied and saved; without it nothing can be.
        std::function<QString()> text;
    };
    void SetContent(const Content& content);
    QString GetText() const;
    // False, with a reason, if the file cannot be written.
    bool SaveText(const QString& path, QString* error) const;

public Q_SLOTS:
    void Copy();

Q_SIGNALS:
    void SaveAsked();

private Q_SLOTS:
    void ShowRow();

private:
    QLabel* m_pSummary;
    QTreeView* m_pView;
    BatchRowModel* m_pModel;
    QPlainTextEdit* m_pRow;
    QPushButton* m_pCopy;
    QPushButton* m_pSave;
    std::function<QString()> m_text;
};
