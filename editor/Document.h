#pragma once

#include <QImage>
#include <QObject>
#include <QString>

#include <memory>

class KXDocumentInterface;
class KXDocumentModel;
class QUndoStack;

// An open document: the pixels, their file, and the steps that can be undone.
class Document : public QObject
{
    Q_OBJECT

public:
    // The steps keep at most this much in memory, the rest lies in temporary files.
    static const qint64 UndoMemory;
    // Older steps are forgotten.
    static const int UndoSteps;

    // A document with one layer. The path is empty as long as there is no file; then the name stands for it.
    Document(const QImage& image, const QString& path, const QString& name, QObject* parent = nullptr);
    ~Document() override;

    KXDocumentInterface* GetPixels() const;
    KXDocumentModel* GetModel() const;
    QUndoStack* GetUndoStack() const;
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
    // What the undo steps hold in memory, in bytes.
    qint64 GetUndoBytes() const;

Q_SIGNALS:
    // The title, the path, or whether there are unsaved changes.
    void StateChanged();

private Q_SLOTS:
    void OnUndoIndexChanged();

private:
    std::unique_ptr<KXDocumentInterface> m_pPixels;
    std::unique_ptr<KXDocumentModel> m_pModel;
    QUndoStack* m_pUndoStack;
    QString m_path;
    QString m_name;
};
