#include "BarForm.h"

#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QProcess>
#include <QTranslator>
#include <QtTest>

#include <memory>

namespace
{
const QList<QByteArray> TextProperties = {"text", "toolTip", "suffix", "accessibleName"};

// Turns every text of one context into upper case.
class Shouting : public QTranslator
{
public:
    explicit Shouting(const QString& context) : m_context(context) { }
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        return m_context == QLatin1String(context) ? QString::fromUtf8(text).toUpper() : QString();
    }
    bool isEmpty() const override { return false; }

private:
    QString m_context;
};

QStringList itemTexts(const QComboBox* list)
{
    QStringList texts;
    for (int i = 0; i < list->count(); ++i)
    {
        texts << list->itemText(i);
    }
    return texts;
}

QStringList upper(const QStringList& texts)
{
    QStringList result;
    for (const QString& text : texts)
    {
        result << text.toUpper();
    }
    return result;
}

QString asText(const QVariant& value)
{
    QString text;
    QDebug(&text) << value;
    return text;
}

BarControl makeControl(const char* className, const char* name)
{
    BarControl control;
    control.ClassName = className;
    control.Name = name;
    control.With("minimumSize", QSize(0, 0)).With("maximumSize", QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
    control.ToolTip("");
    return control;
}

// A property that is an enumeration is no int to QVariant.
bool isSame(const QVariant& is, const QVariant& wanted)
{
    return wanted.userType() == QMetaType::Int ? is.toInt() == wanted.toInt() : is == wanted;
}
} // namespace

BarControl BarControl::Separator(const char* name)
{
    BarControl control = makeControl("QFrame", name);
    control.With("minimumSize", QSize(1, 0)).With("maximumSize", QSize(1, QWIDGETSIZE_MAX));
    control.With("frameShape", int(QFrame::StyledPanel)).With("frameShadow", int(QFrame::Raised));
    return control;
}

BarControl BarControl::PopupButton(const char* className, const char* name, const char* toolTip)
{
    BarControl control = makeControl(className, name);
    control.With("text", QString()).With("checkable", true).With("checked", false);
    control.With("accessibleName", QString(toolTip));
    return control.ToolTip(toolTip).FixedSize(24, 24).Focus(Qt::NoFocus);
}

BarControl BarControl::Caption(const char* name, const char* text, const char* buddy)
{
    BarControl control = makeControl("QLabel", name);
    control.Buddy = buddy;
    control.With("text", QString(text));
    control.With("alignment", int(Qt::AlignRight | Qt::AlignTrailing | Qt::AlignVCenter));
    return control.FixedHeight(24);
}

BarControl BarControl::NumberBox(const char* name, int minimum, int maximum, int value, const char* suffix)
{
    BarControl control = makeControl("NVSpinBox", name);
    control.With("minimum", minimum).With("maximum", maximum).With("value", value);
    control.With("suffix", QString(suffix)).With("singleStep", 1);
    return control.Focus(Qt::ClickFocus);
}

BarControl BarControl::List(const char* name, const QStringList& items, int index, int minimumWidth)
{
    BarControl control = makeControl("KXCommonComboBox", name);
    control.Items = items;
    control.With("currentIndex", index).With("minimumSize", QSize(minimumWidth, 0));
    return control.Focus(Qt::NoFocus);
}

BarControl BarControl::CheckBox(const char* name, const char* text, bool checked)
{
    BarControl control = makeControl("QCheckBox", name);
    control.With("text", QString(text)).With("checked", checked);
    return control.Focus(Qt::NoFocus);
}

BarControl& BarControl::With(const char* property, const QVariant& value)
{
    for (auto& fact : Facts)
    {
        if (fact.first == property)
        {
            fact.second = value;
            return *this;
        }
    }
    Facts.append({property, value});
    return *this;
}

BarControl& BarControl::ToolTip(const char* text)
{
    return With("toolTip", QString(text));
}

BarControl& BarControl::FixedSize(int width, int height)
{
    return With("minimumSize", QSize(width, height)).With("maximumSize", QSize(width, height));
}

BarControl& BarControl::FixedHeight(int height)
{
    int width = 0;
    for (const auto& fact : qAsConst(Facts))
    {
        if (fact.first == "minimumSize")
        {
            width = fact.second.toSize().width();
        }
    }
    return With("minimumSize", QSize(width, height)).With("maximumSize", QSize(QWIDGETSIZE_MAX, height));
}

BarControl& BarControl::Focus(Qt::FocusPolicy policy)
{
    return With("focusPolicy", int(policy));
}

BarForm::BarForm(Factory create, const char* name, const char* title, const char* picture,
                 const QList<BarControl>& controls, const QStringList& tabOrder)
    : m_create(std::move(create)),
      m_name(name),
      m_title(title),
      m_picture(picture),
      m_controls(controls),
      m_tabOrder(tabOrder)
{
}

BarForm& BarForm::PictureLabel(const char* name)
{
    m_pictureLabel = name;
    return *this;
}

void BarForm::CheckFrame() const
{
    const std::unique_ptr<QWidget> bar(m_create());

    QCOMPARE(bar->objectName(), m_name);
    QCOMPARE(bar->windowTitle(), m_title);
    const auto* grid = qobject_cast<QGridLayout*>(bar->layout());
    QVERIFY(grid);
    QCOMPARE(grid->objectName(), QString("gridLayout"));
    QCOMPARE(grid->contentsMargins(), QMargins());
    QCOMPARE(grid->count(), 1);
    const auto* row = qobject_cast<QHBoxLayout*>(grid->itemAtPosition(0, 0)->layout());
    QVERIFY(row);
    QCOMPARE(row->objectName(), QString("horizontalLayout"));
    QCOMPARE(row->spacing(), 2);
}

void BarForm::CheckRow() const
{
    const std::unique_ptr<QWidget> bar(m_create());
    const auto* row = bar->findChild<QHBoxLayout*>("horizontalLayout");
    QVERIFY(row);

    QStringList is;
    for (int i = 0; i < row->count() - 1; ++i)
    {
        const QSpacerItem* gap = row->itemAt(i)->spacerItem();
        is << (gap ? QString("-") : row->itemAt(i)->widget()->objectName());
        if (gap)
        {
            QCOMPARE(gap->sizeHint(), QSize(6, 20));
            QCOMPARE(gap->sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
            QCOMPARE(gap->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
        }
    }
    QStringList wanted(m_pictureLabel);
    for (int i = 0; i < m_controls.size(); ++i)
    {
        if (i == 0 || m_controls[i - 1].Buddy != m_controls[i].Name)
        {
            wanted << "-";
        }
        wanted << m_controls[i].Name;
    }

    QCOMPARE(is, wanted);
    const QSpacerItem* end = row->itemAt(row->count() - 1)->spacerItem();
    QVERIFY(end);
    QCOMPARE(end->sizeHint(), QSize(0, 0));
    QCOMPARE(end->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(end->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
}

void BarForm::CheckPicture() const
{
    const std::unique_ptr<QWidget> bar(m_create());
    const auto* label = bar->findChild<QLabel*>(m_pictureLabel);
    QVERIFY(label);

    QCOMPARE(label->minimumSize(), QSize(40, 40));
    QCOMPARE(label->maximumSize(), QSize(40, 40));
    QCOMPARE(label->text(), QString());
    QCOMPARE(label->alignment(), Qt::Alignment(Qt::AlignCenter));
    const QPixmap picture = label->pixmap(Qt::ReturnByValue);
    QVERIFY(!picture.isNull());
    QVERIFY(picture.width() / picture.devicePixelRatioF() <= 40);
    QCOMPARE(picture.toImage(), QPixmap(m_picture).toImage());
}

void BarForm::CheckPictureOfDenseScreen() const
{
    if (!IsOnDenseScreen())
    {
        return;
    }
    const std::unique_ptr<QWidget> bar(m_create());
    const QPixmap picture = bar->findChild<QLabel*>(m_pictureLabel)->pixmap(Qt::ReturnByValue);
    QCOMPARE(picture.toImage(), QPixmap(QString(m_picture).replace(".png", "@2x.png")).toImage());
    QCOMPARE(picture.devicePixelRatioF(), 2.0);
}

void BarForm::AddControlRows() const
{
    QTest::addColumn<int>("control");
    for (int i = 0; i < m_controls.size(); ++i)
    {
        QTest::newRow(m_controls[i].Name.toLatin1()) << i;
    }
}

void BarForm::CheckControl() const
{
    QFETCH(const int, control);
    const BarControl& wanted = m_controls[control];
    const std::unique_ptr<QWidget> bar(m_create());
    const auto* widget = bar->findChild<QWidget*>(wanted.Name);

    QVERIFY(widget);
    QCOMPARE(QString(widget->metaObject()->className()), wanted.ClassName);
    for (const auto& fact : wanted.Facts)
    {
        const QVariant is = widget->property(fact.first);
        QVERIFY2(is.isValid() && isSame(is, fact.second),
                 qPrintable(QString("%1 is %2").arg(QString(fact.first), asText(is))));
    }
    if (const auto* label = qobject_cast<const QLabel*>(widget))
    {
        QVERIFY(label->buddy());
        QCOMPARE(label->buddy()->objectName(), wanted.Buddy);
    }
    if (const auto* list = qobject_cast<const QComboBox*>(widget))
    {
        QCOMPARE(itemTexts(list), wanted.Items);
    }
}

void BarForm::CheckTabOrder() const
{
    const std::unique_ptr<QWidget> bar(m_create());
    const auto* first = bar->findChild<QWidget*>(m_tabOrder.first());
    QVERIFY(first);
    QStringList chain;
    const QWidget* widget = first;
    do
    {
        if (m_tabOrder.contains(widget->objectName()))
        {
            chain << widget->objectName();
        }
        widget = widget->nextInFocusChain();
    } while (widget != first);

    QCOMPARE(chain, m_tabOrder);
}

void BarForm::CheckTranslation() const
{
    Shouting translator(m_name);
    QCoreApplication::installTranslator(&translator);
    const std::unique_ptr<QWidget> bar(m_create());
    QCoreApplication::removeTranslator(&translator);

    QCOMPARE(bar->windowTitle(), m_title.toUpper());
    QCOMPARE(texts(*bar), upper(expectedTexts()));
}

void BarForm::CheckLanguageChange() const
{
    const std::unique_ptr<QWidget> bar(m_create());
    const auto lists = bar->findChildren<QComboBox*>();
    for (QComboBox* list : lists)
    {
        list->setCurrentIndex(1);
    }
    Shouting translator(m_name);

    QCoreApplication::installTranslator(&translator);
    QCoreApplication::processEvents();
    QCoreApplication::removeTranslator(&translator);
    QCoreApplication::processEvents();

    QCOMPARE(bar->windowTitle(), m_title);
    QCOMPARE(texts(*bar), expectedTexts());
    for (const QComboBox* list : lists)
    {
        QCOMPARE(list->currentIndex(), 1);
    }
}

QStringList BarForm::texts(const QWidget& bar) const
{
    QStringList result;
    for (const BarControl& control : m_controls)
    {
        const auto* widget = bar.findChild<QWidget*>(control.Name);
        for (const auto& fact : control.Facts)
        {
            if (TextProperties.contains(fact.first))
            {
                result << widget->property(fact.first).toString();
            }
        }
        if (const auto* list = qobject_cast<const QComboBox*>(widget))
        {
            result << itemTexts(list);
        }
    }
    return result;
}

QStringList BarForm::expectedTexts() const
{
    QStringList result;
    for (const BarControl& control : m_controls)
    {
        for (const auto& fact : control.Facts)
        {
            if (TextProperties.contains(fact.first))
            {
                result << fact.second.toString();
            }
        }
        result << control.Items;
    }
    return result;
}

QStringList BlendModes()
{
    return {"Normal",      "Multiply",       "Screen",        "Overlay",    "Difference",
            "Exclusion",   "Lighten colors", "Darken colors", "Soft light", "Hard light",
            "Color dodge", "Color burn",     "Addition"};
}

bool IsOnDenseScreen()
{
    const QString child = "NORVANE_TEST_DENSE_SCREEN";
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (environment.contains(child))
    {
        return true;
    }
    environment.insert("QT_SCALE_FACTOR", "2");
    environment.insert(child, "1");
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QCoreApplication::applicationFilePath(), {QTest::currentTestFunction()});
    if (!process.waitForFinished(60000) || process.exitCode() != 0)
    {
        QTest::qFail(process.readAll().constData(), __FILE__, __LINE__);
    }
    return false;
}
