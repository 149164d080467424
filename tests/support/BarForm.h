// What the form of an option bar is to look like, as a table, and the checks that hold for every bar.

#pragma once

#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QWidget>

#include <functional>

// One control of a bar. Facts are properties by name; what is not said keeps a default that is checked too:
// no tooltip, no text, an unlimited size.
struct BarControl
{
    static BarControl Separator(const char* name);
    // A button of 24 by 24 pixels that opens a popup; the tooltip is its accessible name too.
    static BarControl PopupButton(const char* className, const char* name, const char* toolTip);
    // Stands right before the control that it names, with no gap between.
    static BarControl Caption(const char* name, const char* text, const char* buddy);
    static BarControl NumberBox(const char* name, int minimum, int maximum, int value, const char* suffix);
    static BarControl List(const char* name, const QStringList& items, int index, int minimumWidth);
    static BarControl CheckBox(const char* name, const char* text, bool checked);

    BarControl& With(const char* property, const QVariant& value);
    BarControl& ToolTip(const char* text);
    BarControl& FixedSize(int width, int height);
    BarControl& FixedHeight(int height);
    BarControl& Focus(Qt::FocusPolicy policy);

    QString Name;
    QString ClassName;
    QList<QPair<QByteArray, QVariant>> Facts;
    QStringList Items;
    QString Buddy;
};

// A test of a bar has a test function for each of the checks, which fail it as QVERIFY does.
class BarForm
{
public:
    using Factory = std::function<QWidget*()>;

    // The controls in the order of the row, without the picture; `tabOrder` names those that it orders.
    BarForm(Factory create, const char* name, const char* title, const char* picture,
            const QList<BarControl>& controls, const QStringList& tabOrder);

    // The label of the picture, where it is not m_pPictureLabelMain.
    BarForm& PictureLabel(const char* name);

    // Title, object name, the grid and its row.
    void CheckFrame() const;
    // Controls and gaps from left to right.
    void CheckRow() const;
    void CheckPicture() const;
    // The same at twice the density.
    void CheckPictureOfDenseScreen() const;
    // For a _data() function: the column "control" with one row a control.
    void AddControlRows() const;
    // The control of the current row.
    void CheckControl() const;
    void CheckTabOrder() const;
    // All texts come from the translator, under the form's name.
    void CheckTranslation() const;
    // A bar does not translate itself anew: texts and choices stay as they are.
    void CheckLanguageChange() const;

private:
    QStringList texts(const QWidget& bar) const;
    QStringList expectedTexts() const;

    Factory m_create;
    QString m_name;
    QString m_title;
    QString m_picture;
    QString m_pictureLabel = QStringLiteral("m_pPictureLabelMain");
    QList<BarControl> m_controls;
    QStringList m_tabOrder;
};

// True where the screen has twice the density: in a child process that runs this test function alone. Such a
// child is started else, and its failure is that of the test.
bool IsOnDenseScreen();

// The texts of the blend-mode list.
QStringList BlendModes();
