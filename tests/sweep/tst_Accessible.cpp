// No control that a person can act on is nameless to a screen reader.

#include "Specimens.h"
#include "TestMain.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QTabBar>
#include <QTextEdit>

namespace
{
QString nameOf(QWidget* widget)
{
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
    return interface ? interface->text(QAccessible::Name).trimmed() : QString();
}

// Parts of another control, which is named as a whole.
bool isPart(const QWidget* widget)
{
    const QWidget* parent = widget->parentWidget();
    const auto* area = qobject_cast<const QAbstractScrollArea*>(parent);
    return qobject_cast<const QScrollBar*>(widget) || qobject_cast<const QAbstractSpinBox*>(parent) ||
        qobject_cast<const QComboBox*>(parent) || qobject_cast<const QTabBar*>(parent) ||
        (area && area->viewport() == widget) || (parent && parent->inherits("QComboBoxPrivateContainer")) ||
        widget->objectName().startsWith("qt_");
}

bool isControl(const QWidget* widget)
{
    return qobject_cast<const QAbstractButton*>(widget) || qobject_cast<const QAbstractSpinBox*>(widget) ||
        qobject_cast<const QComboBox*>(widget) || qobject_cast<const QLineEdit*>(widget) ||
        qobject_cast<const QAbstractSlider*>(widget) || qobject_cast<const QAbstractItemView*>(widget) ||
        qobject_cast<const QTextEdit*>(widget) || qobject_cast<const QPlainTextEdit*>(widget) ||
        (widget->focusPolicy() & Qt::TabFocus);
}

bool isNamed(QWidget* widget)
{
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
    if (interface && qobject_cast<QComboBox*>(widget))
    {
        // The toolkit answers with the current entry, which is the value; a screen reader asks for the label
        // then.
        return !widget->accessibleName().isEmpty() || !interface->relations(QAccessible::Label).isEmpty();
    }
    return !nameOf(widget).isEmpty();
}

QString describe(const QWidget* widget)
{
    return QString("%1 \"%2\" in %3 \"%4\"")
        .arg(widget->metaObject()->className(), widget->objectName(),
             widget->parentWidget() ? widget->parentWidget()->metaObject()->className() : "nothing",
             widget->parentWidget() ? widget->parentWidget()->objectName() : QString());
}

QStringList nameless(const QWidget* root)
{
    QStringList found;
    const QList<QWidget*> widgets = root->findChildren<QWidget*>();
    for (QWidget* widget : widgets)
    {
        if (isControl(widget) && !isPart(widget) && !isNamed(widget))
        {
            found.append(describe(widget));
        }
    }
    return found;
}
} // namespace

class tst_Accessible : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void namelessControlsAreFound();
    void everyControlHasAName_data();
    void everyControlHasAName();
    void everyWindowHasAName_data();
    void everyWindowHasAName();
};

void tst_Accessible::namelessControlsAreFound()
{
    QWidget window;
    new QSpinBox(&window);
    auto* icon = new QPushButton(&window);
    icon->setToolTip("only a tooltip");
    auto* combo = new QComboBox(&window);
    combo->addItem("entry");
    new QSlider(&window);
    QCOMPARE(nameless(&window).size(), 4);
    const QList<QWidget*> controls = window.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget* control : controls)
    {
        control->setAccessibleName("name");
    }
    QCOMPARE(nameless(&window), QStringList());
}

void tst_Accessible::everyControlHasAName_data()
{
    AddSpeciesRows();
}

// Popups are opened first: some build their content only then.
void tst_Accessible::everyControlHasAName()
{
    QFETCH(QByteArray, species);
    const std::unique_ptr<Specimen> specimen = SpeciesOf(species).Create();
    QVERIFY(specimen->Show());
    specimen->OpenPopups();
    const QStringList found = nameless(specimen->Widget);
    QVERIFY2(found.isEmpty(), qPrintable("nameless to a screen reader: " + found.join("; ")));
}

void tst_Accessible::everyWindowHasAName_data()
{
    AddSpeciesRows();
}

// The widget itself, by its accessible name or its title.
void tst_Accessible::everyWindowHasAName()
{
    QFETCH(QByteArray, species);
    const Species& kind = SpeciesOf(species);
    if (kind.NamedByHost)
    {
        QSKIP("whoever uses this class names it");
    }
    const std::unique_ptr<Specimen> specimen = kind.Create();
    QVERIFY(specimen->Show());
    QVERIFY(!nameOf(specimen->Widget).isEmpty());
}

NV_TEST_MAIN(tst_Accessible)

#include "tst_Accessible.moc"
