#pragma once

#include <QHash>
#include <QStringList>
#include <QWidget>

class QCheckBox;
class QTreeWidget;
class QTreeWidgetItem;
struct HeardSignal;

// The log of one widget: a numbered line for each signal, and how often each was told.
//
// While it is paused, nothing is written and nothing counted.
class GalleryLog : public QWidget
{
    Q_OBJECT

public:
    explicit GalleryLog(QWidget* parent = nullptr);
    ~GalleryLog() override;

    // Number and text of each line, with a tab between.
    QStringList GetLines() const;
    // How often the signal was told; 0 for one that is not counted here.
    int GetCount(const QString& signature) const;
    bool IsPaused() const;

    // Empties the log for another widget, which has these signals.
    void Start(const QStringList& signatures);
    void Add(const HeardSignal& signal);
    // A line that is no signal.
    void Note(const QString& text);

public Q_SLOTS:
    // Lines go, and all counts are 0 again; the next line has the number 1.
    void Clear();
    // All lines, as plain text, to the clipboard.
    void Copy() const;
    void SetPaused(bool paused);

private:
    QWidget* CreateLists();
    QWidget* CreateButtons();
    void SetCount(QTreeWidgetItem* counter, int count);

    QTreeWidget* m_pLines;
    QTreeWidget* m_pCounts;
    QCheckBox* m_pPause;
    // By the signature.
    QHash<QString, QTreeWidgetItem*> m_counters;
};
