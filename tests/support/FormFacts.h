// Facts of a form in a table, one row of a test each, looked at on the live widget.

#pragma once

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QList>
#include <QStringList>
#include <QTranslator>
#include <QVariant>
#include <QWidget>
#include <QtTest>

// The fact is the name of a property, or one of
//   class     the name of the class
//   buddy     the object name of a label's buddy, empty without one
//   picture   the name of the picture that a label shows
//   items     the texts of a list
//   cell      "row column rowspan columnspan" in the grid that holds the control
struct FormFact
{
    QString control; // its object name; empty for the form itself
    QByteArray fact;
    QVariant value;
};

// What several facts say of one control.
inline QList<FormFact> FactsOf(const QString& control, const QList<QPair<QByteArray, QVariant>>& facts)
{
    QList<FormFact> result;
    for (const auto& fact : facts)
        result.append({control, fact.first, fact.second});
    return result;
}

// For a _data() function.
inline void AddFormFactRows(const QList<FormFact>& facts)
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<QByteArray>("fact");
    QTest::addColumn<QVariant>("wanted");
    for (const FormFact& fact : facts)
    {
        const QString name = fact.control.isEmpty() ? QString("form") : fact.control;
        QTest::addRow("%s, %s", qPrintable(name), fact.fact.constData())
            << fact.control << fact.fact << fact.value;
    }
}

inline QVariant ItemsOf(const QWidget* widget)
{
    QStringList texts;
    if (const auto* list = qobject_cast<const QComboBox*>(widget))
    {
        for (int i = 0; i < list->count(); ++i)
            texts.append(list->itemText(i));
    }
    return texts;
}

inline QVariant CellOf(const QWidget* form, QWidget* widget)
{
    const QList<QGridLayout*> grids = form->findChildren<QGridLayout*>();
    for (const QGridLayout* grid : grids)
    {
        const int index = grid->indexOf(widget);
        if (index < 0)
            continue;
        int row = 0, column = 0, rows = 0, columns = 0;
        grid->getItemPosition(index, &row, &column, &rows, &columns);
        return QString("%1 %2 %3 %4").arg(row).arg(column).arg(rows).arg(columns);
    }
    return QString("in no grid");
}

inline QVariant FactOf(const QWidget* form, QWidget* widget, const QByteArray& fact)
{
    const auto* label = qobject_cast<const QLabel*>(widget);
    if (fact == "class")
        return QString(widget->metaObject()->className());
    if (fact == "buddy")
        return label && label->buddy() ? label->buddy()->objectName() : QString();
    if (fact == "items")
        return ItemsOf(widget);
    if (fact == "cell")
        return CellOf(form, widget);
    return widget->property(fact);
}

// The row of AddFormFactRows that is current.
inline void CheckFormFact(QWidget* form)
{
    QFETCH(const QString, control);
    QFETCH(const QByteArray, fact);
    QFETCH(const QVariant, wanted);
    auto* widget = control.isEmpty() ? form : form->findChild<QWidget*>(control);
    QVERIFY(widget);
    if (fact == "picture")
    {
        const QPixmap picture = qobject_cast<QLabel*>(widget)->pixmap(Qt::ReturnByValue);
        QVERIFY(!picture.isNull());
        QCOMPARE(picture.toImage(), QPixmap(wanted.toString()).toImage());
        return;
    }
    const QVariant is = FactOf(form, widget, fact);
    QVERIFY(is.isValid());
    if (wanted.userType() == QMetaType::Int)
        QCOMPARE(is.toInt(), wanted.toInt());
    else
        QCOMPARE(is, wanted);
}

// The names of what stands in a row of a grid or in a box, from left to right, a gap as "-", the room at the
// end as "<>", an empty column left out.
inline QStringList RowOf(const QLayout* layout)
{
    QStringList names;
    for (int i = 0; i < layout->count(); ++i)
    {
        QLayoutItem* item = layout->itemAt(i);
        if (item->widget())
            names.append(item->widget()->objectName());
        else if (item->spacerItem() && item->sizeHint() == QSize(6, 20) &&
                 item->spacerItem()->sizePolicy() == QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Minimum))
            names.append("-");
        else if (item->spacerItem() && item->sizeHint() == QSize(0, 0) &&
                 item->spacerItem()->sizePolicy() ==
                     QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum))
            names.append("<>");
        else
            names.append("?");
    }
    return names;
}

// Turns every text of one context into upper case while it lives.
class ShoutingTranslator : public QTranslator
{
public:
    explicit ShoutingTranslator(const QString& context) : m_context(context)
    {
        QCoreApplication::installTranslator(this);
    }
    ~ShoutingTranslator() override { QCoreApplication::removeTranslator(this); }
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        return m_context == QLatin1String(context) ? QString::fromUtf8(text).toUpper() : QString();
    }
    bool isEmpty() const override { return false; }

private:
    QString m_context;
};

// The title, then the texts, tooltips and entries of the children in the order of their creation.
inline QStringList TextsOf(const QWidget* form)
{
    QStringList texts(form->windowTitle());
    const QList<QWidget*> children = form->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (const QWidget* child : children)
    {
        const bool isText = !child->inherits("QSpinBox");
        texts << (isText ? child->property("text").toString() : QString()) << child->toolTip()
              << child->accessibleName() << child->property("suffix").toString()
              << ItemsOf(child).toStringList();
    }
    texts.removeAll(QString());
    return texts;
}

// All texts of the form come from the translator, under the form's name.
template <class Form>
void CheckFormTranslation(const char* context)
{
    const Form plain(nullptr);
    const ShoutingTranslator translator(context);
    const Form shouting(nullptr);
    QStringList wanted;
    for (const QString& text : TextsOf(&plain))
        wanted.append(text.toUpper());
    QVERIFY(wanted != TextsOf(&plain));
    QCOMPARE(TextsOf(&shouting), wanted);
}

// A caption of a bar, a separator, a read-out of a bar.
inline QList<FormFact> CaptionFacts(const QString& name, const QString& text, const QString& buddy)
{
    return FactsOf(name,
                   {{"class", "QLabel"},
                    {"text", text},
                    {"buddy", buddy},
                    {"minimumSize", QSize(0, 24)},
                    {"maximumSize", QSize(QWIDGETSIZE_MAX, 24)},
                    {"alignment", int(Qt::AlignRight | Qt::AlignTrailing | Qt::AlignVCenter)}});
}

inline QList<FormFact> SeparatorFacts(const QString& name)
{
    return FactsOf(name,
                   {{"class", "QFrame"},
                    {"minimumSize", QSize(1, 0)},
                    {"maximumSize", QSize(1, QWIDGETSIZE_MAX)},
                    {"frameShape", int(QFrame::StyledPanel)},
                    {"frameShadow", int(QFrame::Raised)}});
}

inline QList<FormFact> PictureFacts(const QString& name, const QString& picture)
{
    return FactsOf(name,
                   {{"class", "QLabel"},
                    {"text", QString()},
                    {"picture", picture},
                    {"minimumSize", QSize(40, 40)},
                    {"maximumSize", QSize(40, 40)},
                    {"alignment", int(Qt::AlignCenter)}});
}

inline QList<FormFact> ReadOutFacts(const QString& name, const QSize& smallest, const QSize& largest)
{
    return FactsOf(name,
                   {{"class", "QLabel"},
                    {"text", QString()},
                    {"buddy", QString()},
                    {"minimumSize", smallest},
                    {"maximumSize", largest},
                    {"alignment", int(Qt::AlignLeft | Qt::AlignLeading | Qt::AlignVCenter)}});
}

inline QList<FormFact> ButtonFacts(const QString& name, const QString& text, const QString& toolTip,
                                   const QSize& smallest)
{
    return FactsOf(name,
                   {{"class", "QPushButton"},
                    {"text", text},
                    {"toolTip", toolTip},
                    {"enabled", false},
                    {"checkable", false},
                    {"minimumSize", smallest},
                    {"maximumSize", QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX)},
                    {"focusPolicy", int(Qt::NoFocus)}});
}

inline QList<FormFact> ListFacts(const QString& name, const QStringList& items, int index,
                                 const QSize& smallest, int tallest)
{
    return FactsOf(name,
                   {{"class", "KXCommonComboBox"},
                    {"items", items},
                    {"currentIndex", index},
                    {"toolTip", QString()},
                    {"minimumSize", smallest},
                    {"maximumSize", QSize(QWIDGETSIZE_MAX, tallest)},
                    {"focusPolicy", int(Qt::NoFocus)}});
}
