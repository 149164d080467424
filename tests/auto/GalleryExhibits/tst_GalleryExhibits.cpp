// The table of the gallery: all widgets of the library are in it, and each is made as its row says.

#include "GalleryExhibits.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include "KXDialog.h"
#include "TestMain.h"

namespace
{

// Exported class -> its base, of the headers in a folder.
QMap<QString, QString> ExportedClasses(const QString& folder)
{
    static const QRegularExpression declaration("^class \\w+_EXPORT (\\w+) (?:final )?: public (\\w+)",
                                                QRegularExpression::MultilineOption);
    QMap<QString, QString> bases;
    const QFileInfoList headers = QDir(folder).entryInfoList({"*.h"}, QDir::Files);
    for (const QFileInfo& header : headers)
    {
        QFile file(header.filePath());
        if (!file.open(QIODevice::ReadOnly))
            continue;
        QRegularExpressionMatchIterator found = declaration.globalMatch(QString::fromUtf8(file.readAll()));
        while (found.hasNext())
        {
            const QRegularExpressionMatch match = found.next();
            bases[match.captured(1)] = match.captured(2);
        }
    }
    return bases;
}

// The widgets that the library exports.
QStringList ExportedWidgets(const QString& include)
{
    const QSet<QString> noWidgets = {"QObject", "QStyledItemDelegate"};
    QStringList widgets;
    const QMap<QString, QString> classes = ExportedClasses(include);
    for (auto each = classes.begin(); each != classes.end(); ++each)
    {
        if (!noWidgets.contains(each.value()))
            widgets.append(each.key());
    }
    return widgets;
}

QStringList Names()
{
    QStringList names;
    for (const GalleryRow& row : GalleryRows())
        names.append(row.name);
    return names;
}

} // namespace

class tst_GalleryExhibits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyExportedWidgetIsInTheTableOnce()
    {
        const QString include = QFINDTESTDATA("../../../include");
        QVERIFY2(!include.isEmpty(), "the folder of the headers is not found");
        const QStringList widgets = ExportedWidgets(include);
        QVERIFY(widgets.size() > 30);

        QStringList names = Names();
        names.sort();

        QCOMPARE(names, widgets);
    }

    void theTableIsInTheOrderOfGroupsAndNames()
    {
        const std::vector<GalleryRow>& rows = GalleryRows();
        for (size_t i = 1; i < rows.size(); ++i)
        {
            const bool sameGroup = rows[i - 1].group == rows[i].group;
            QVERIFY2(sameGroup ? qstrcmp(rows[i - 1].name, rows[i].name) < 0
                               : rows[i - 1].group < rows[i].group,
                     rows[i].name);
        }
    }

    void aRowIsFoundByItsWholeNameOnly()
    {
        QCOMPARE(FindGalleryRow("NVZoomPanel")->name, "NVZoomPanel");
        QVERIFY(!FindGalleryRow("NVZoom"));
        QVERIFY(!FindGalleryRow("nvzoompanel"));
        QVERIFY(!FindGalleryRow(QString()));
    }

    void theGroupsHaveTitles()
    {
        QCOMPARE(GalleryGroupTitle(GalleryGroup::Bars), QString("Bars"));
        QCOMPARE(GalleryGroupTitle(GalleryGroup::Panels), QString("Panels"));
        QCOMPARE(GalleryGroupTitle(GalleryGroup::Dialogs), QString("Dialogs"));
    }

    void eachRowMakesItsWidgetForTheParent_data() { AddRows(); }
    void eachRowMakesItsWidgetForTheParent()
    {
        QFETCH(QString, name);
        QWidget parent;

        const std::unique_ptr<Exhibit> exhibit = FindGalleryRow(name)->make(&parent);

        // Without a meta-object of its own it is known by that of its base.
        const QString known = name == "NVRedEyeToolbar" ? QString("QWidget") : name;
        QCOMPARE(QString(exhibit->widget->metaObject()->className()), known);
        QCOMPARE(exhibit->widget->parentWidget(), &parent);
    }

    void whatIsAWindowCanBeOpenedAndNothingElse_data() { AddRows(); }
    void whatIsAWindowCanBeOpenedAndNothingElse()
    {
        QFETCH(QString, name);
        QWidget parent;

        const GalleryRow* row = FindGalleryRow(name);
        const std::unique_ptr<Exhibit> exhibit = row->make(&parent);

        QCOMPARE(bool(exhibit->open), exhibit->widget->isWindow());
        QCOMPARE(qobject_cast<KXDialog*>(exhibit->widget) != nullptr, row->group == GalleryGroup::Dialogs);
    }

    void nothingIsLeftOfAnExhibit_data() { AddRows(); }
    void nothingIsLeftOfAnExhibit()
    {
        QFETCH(QString, name);
        QWidget parent;
        std::unique_ptr<Exhibit> exhibit = FindGalleryRow(name)->make(&parent);
        const QPointer<QWidget> widget = exhibit->widget;
        QList<QPointer<QObject>> parts;
        for (const Exhibit::Part& part : exhibit->parts)
            parts.append(part.object);

        exhibit.reset();

        QVERIFY(!widget);
        QCOMPARE(parent.findChildren<QWidget*>(), QList<QWidget*>());
        for (const QPointer<QObject>& part : parts)
            QVERIFY(!part);
    }

    void theWidgetMayGoBeforeItsExhibit_data() { AddRows(); }
    void theWidgetMayGoBeforeItsExhibit()
    {
        QFETCH(QString, name);
        auto parent = std::make_unique<QWidget>();
        std::unique_ptr<Exhibit> exhibit = FindGalleryRow(name)->make(parent.get());

        delete exhibit->widget;
        parent.reset();

        QVERIFY(!exhibit->widget);
        QVERIFY(!exhibit->companion);
    }

private:
    static void AddRows()
    {
        QTest::addColumn<QString>("name");
        for (const GalleryRow& row : GalleryRows())
            QTest::newRow(row.name) << row.name;
    }
};

NV_TEST_MAIN(tst_GalleryExhibits)
#include "tst_GalleryExhibits.moc"
