#pragma once

#include <QDir>
#include <QString>
#include <QStringList>

class QImage;
class QWidget;

// What the tour leaves behind: numbered pictures, a page that shows them, and one line a step on the standard
// output.
class TourReport
{
public:
    // Makes the folder. Old pictures of the same names are overwritten.
    explicit TourReport(const QString& folder);

    // False if the folder could not be made.
    bool IsReady() const;
    // Begins a step; the name is part of its pictures' file names.
    void Begin(const QString& name, const QString& caption);
    // Notes that an expectation of the step was not met, or of what came after the last one.
    void Fail(const QString& reason);
    // Whether that was so in the step that began last.
    bool HasFailed() const;
    // A remark for the line of the step.
    void Note(const QString& text);
    // A picture of the window with all popups and dialogs over it.
    void TakePicture(QWidget* window);
    // A picture of the widget alone, of a bar no larger than it has to be; its file has this name and no
    // number.
    void TakePictureOf(QWidget* widget, const QString& name);
    // Writes the line.
    void End();
    // Writes the page; true if all steps went well.
    bool Close();

private:
    struct Step
    {
        QString name;
        QString caption;
        QStringList pictures;
        QStringList failures;
        QStringList notes;
    };

    void Save(const QImage& image, const QString& name);
    QString PageText() const;

    QDir m_folder;
    bool m_isReady;
    // Between Begin and End.
    bool m_isOpen = false;
    int m_pictures = 0;
    QList<Step> m_steps;
};
