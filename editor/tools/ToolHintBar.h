#pragma once

#include <QWidget>

class QLabel;

// The option bar of a tool without options: its picture and a line that says how it is used.
class ToolHintBar : public QWidget
{
    Q_OBJECT

public:
    // The picture is named as Theme::Icon wants it.
    ToolHintBar(const QString& picture, const QString& hint, QWidget* parent = nullptr);

public Q_SLOTS:
    // Loads the picture again.
    void UpdateTheme();

private:
    QString m_picture;
    QLabel* m_pPicture;
};
