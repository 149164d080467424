#pragma once

#include <QDockWidget>
#include <QPointer>
#include <QVector>

class Document;
class History;
class NVHistoryItem;
class NVHistoryPanel;
class NVSpinBox;
class QLabel;
class QSettings;

// The side panel with the steps of the document in front: a click on a row goes to the state that it stands
// for. Below the rows stands what the steps hold, and the most that they may hold, which is one setting for
// all documents. The panel is closed until a person asks for it.
class HistoryDock : public QDockWidget
{
    Q_OBJECT

public:
    // The settings are not owned and outlive the panel.
    explicit HistoryDock(QSettings* settings, QWidget* parent = nullptr);

    // What is shown from now on, which is not owned and is to be taken out before it goes; null for none. The
    // document gets the memory limit for its steps.
    void SetDocument(Document* document);
    // The theme is another one.
    void UpdateTheme();

Q_SIGNALS:
    // What is under way on the document has to come to its end now.
    void AboutToChange();
    // Something to say in the status bar.
    void Message(const QString& text);

private Q_SLOTS:
    void OnVisibilityChanged(bool visible);
    void OnIndexActivated(int index);
    void OnLimitChanged(int megabytes);
    void OnRowsDropped(int count);
    void OnRowsChanged(int from);
    void OnCurrentRowChanged(int row);

private:
    QWidget* CreateFooter();
    const History* Rows() const;
    void AddRow(int row);
    void ShowRow(int row);
    void ShowUsage();

    QSettings* m_pSettings;
    NVHistoryPanel* m_pPanel;
    QLabel* m_pUsage;
    NVSpinBox* m_pLimit;
    QPointer<Document> m_pDocument;
    // The panel's, from the top.
    QVector<NVHistoryItem*> m_items;
};
