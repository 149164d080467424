#pragma once

#include <QList>
#include <QObject>
#include <QVector>

#include "GradientFile.h"
#include "NVGradientStop.h"

// The gradients that a person has to choose from, with their names, kept in a file. At first they are those
// that the program ships. What is shipped, read or added has no two stops at quite the same place.
class GradientLibrary : public QObject
{
    Q_OBJECT

public:
    // What is in the file, if there is one. A file that cannot be read is put aside under another name, and
    // the list is the shipped one.
    explicit GradientLibrary(const QString& path, QObject* parent = nullptr);
    ~GradientLibrary() override;

    // Twenty-four, with names in the language of the moment.
    static QVector<NamedGradient> Shipped();

    const QVector<NamedGradient>& GetGradients() const;
    // As the gradient bar takes them.
    QList<QList<NVGradientStop>> GetList() const;
    // What went wrong when the list was read, in words for a person; empty if nothing did.
    QString GetProblem() const;

    // The list as it was edited: what is in it still keeps its name, what was changed in place too, what is
    // new gets one. Both write the file and give false, with the error, when that fails; the list is the
    // new one all the same. An empty list leaves no file, so that the next start brings the shipped
    // gradients back.
    bool Update(const QList<QList<NVGradientStop>>& list, QString* error);
    // Puts gradients at the end.
    bool Add(const QVector<NamedGradient>& gradients, QString* error);

private:
    void Restore();
    bool PutAside();
    bool Store(QString* error);

    QString m_path;
    QVector<NamedGradient> m_gradients;
    QString m_problem;
    // The file could not be read nor put aside, and is left alone.
    bool m_isLocked = false;
};
