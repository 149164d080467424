#pragma once

#include <QImage>
#include <QObject>
#include <QString>

#include <memory>

class KXDocumentInterface;
class KXDocumentModel;
class History;
class QUndoStack;

// An open document: the pixels, their file, and the steps that can be undone.
class Document : public QObject
{
    Q_OBJECT

public:
    // The steps keep at most this much in memory, the rest lies in temporary files.
    static const qint64 UndoMemory;
    // How many steps are kept, and how many megabytes they may hold in memory and in files, at first.
    static const int UndoSteps;
    static const int UndoMegabytes;

    // A document with one layer. The path is empty as long as there is no file; then the name stands for it.
    Document(const QImage& image, const QString& path, const QString& name, QObject* parent = nullptr);
    ~Document() override;

    KXDocumentInterface* GetPixels() const;
    KXDocumentModel* GetModel() const;
    // Takes subclasses of UndoStep only.
    QUndoStack* GetUndoStack() const;
    // The same steps as rows with pictures.
    History* GetHistory() const;
    // Absolute, or empty.
    QString GetPath() const;
    // The file's name without its folder, or the name that was given.
    QString GetTitle() const;
    bool IsModified() const;
    // The document is as the file at the path holds it now.
    void MarkSaved(const QString& path);
    // Nothing can be undone or redone any more, and the document counts as changed: a step that other steps
    // build on could not be carried out.
    void ForgetSteps();
    // What the undo steps hold, in bytes: in memory, and in memory and files together.
    qint64 GetUndoBytes() const;
    qint64 GetHistoryBytes() const;
    // Steps that are too many, or that hold too much, are dropped for good, the oldest first; the newest one
    // that can be undone always stays.
    int GetUndoMegabytes() const;
    void SetUndoMegabytes(int megabytes);

Q_SIGNALS:
    // The title, the path, or whether there are unsaved changes.
    void StateChanged();
    // The oldest steps were dropped: what was step `count` is the first one now. Comes before the stack tells
    // of its new index.
    void StepsDropped(int count);

private Q_SLOTS:
    void OnUndoIndexChanged();

private:
    int CountTooOld() const;
    void DropSteps(int count);
    void MoveOldToDisk();

    std::unique_ptr<KXDocumentInterface> m_pPixels;
    std::unique_ptr<KXDocumentModel> m_pModel;
    QUndoStack* m_pUndoStack;
    std::unique_ptr<History> m_pHistory;
    int m_undoMegabytes = UndoMegabytes;
    QString m_path;
    QString m_name;
};
