// Rows of plain text.

#include "BatchRowModel.h"

#include <QAbstractItemModelTester>

#include "TestMain.h"

class tst_BatchRowModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cellsAndHeadings()
    {
        BatchRowModel model({"One", "Two"});
        const QAbstractItemModelTester tester(&model);

        model.SetRows(2, [](int row) { return row == 0 ? QStringList{"a", "b"} : QStringList{"c"}; });

        QCOMPARE(model.rowCount(), 2);
        QCOMPARE(model.columnCount(), 2);
        QCOMPARE(model.headerData(1, Qt::Horizontal).toString(), QString("Two"));
        QCOMPARE(model.index(0, 1).data().toString(), QString("b"));
        QCOMPARE(model.index(1, 1).data().toString(), QString());
        model.SetRows(0, nullptr);
        QCOMPARE(model.rowCount(), 0);
    }

    void aRowIsMadeWhenItIsWanted()
    {
        int made = 0;
        BatchRowModel model({"One"});
        model.SetRows(1000000,
                      [&made](int row)
                      {
                          ++made;
                          return QStringList(QString::number(row));
                      });
        QCOMPARE(made, 0);

        QCOMPARE(model.index(999999, 0).data().toString(), QString("999999"));

        QCOMPARE(made, 1);
    }

    void aNameIsShownAsItIs()
    {
        BatchRowModel model({"One"});
        model.SetRows(2, [](int row) { return QStringList{row == 0 ? "a\nb" : "<b>bold</b>"}; });

        QCOMPARE(model.index(0, 0).data().toString(), QString("a\\nb"));
        QCOMPARE(model.index(1, 0).data().toString(), QString("<b>bold</b>"));
        QVERIFY(model.index(1, 0).data(Qt::ToolTipRole).toString().contains("&lt;b&gt;"));
        QCOMPARE(model.index(0, 0).data(Qt::ToolTipRole).toString(), QString("a\nb"));
    }
};

NV_TEST_MAIN(tst_BatchRowModel)
#include "tst_BatchRowModel.moc"
