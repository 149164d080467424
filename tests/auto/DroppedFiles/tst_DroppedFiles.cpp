// What a window takes of that which is dragged onto it, and that it is never moved there.

#include "DroppedFiles.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

#include "TestMain.h"

class tst_DroppedFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pathsAreThoseOfThisMachine()
    {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile("/a b/%1.png"), QUrl("https://example.org/c.png"),
                      QUrl::fromLocalFile(QString::fromUtf8("/\xc3\xa4"))});
        const QDropEvent event(QPointF(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);

        QCOMPARE(DroppedPaths(event), QStringList({"/a b/%1.png", QString::fromUtf8("/\xc3\xa4")}));
    }

    void aTextIsNoPath()
    {
        QMimeData data;
        data.setText("/a.png");
        const QDropEvent event(QPointF(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);

        QVERIFY(DroppedPaths(event).isEmpty());
    }

    void copiesAreTaken_data()
    {
        QTest::addColumn<int>("offered");
        QTest::addColumn<int>("proposed");
        QTest::addColumn<bool>("isTaken");
        QTest::newRow("copy") << int(Qt::CopyAction) << int(Qt::CopyAction) << true;
        QTest::newRow("move where a copy is offered, too")
            << int(Qt::CopyAction | Qt::MoveAction) << int(Qt::MoveAction) << true;
        QTest::newRow("move alone") << int(Qt::MoveAction) << int(Qt::MoveAction) << false;
        QTest::newRow("link alone") << int(Qt::LinkAction) << int(Qt::LinkAction) << false;
    }
    void copiesAreTaken()
    {
        QFETCH(int, offered);
        QFETCH(int, proposed);
        QFETCH(bool, isTaken);
        QMimeData data;
        QDropEvent event(QPointF(), Qt::DropActions(offered), &data, Qt::LeftButton, Qt::NoModifier);
        event.setDropAction(Qt::DropAction(proposed));
        event.setAccepted(!isTaken);

        AcceptAsCopy(&event);

        QCOMPARE(event.isAccepted(), isTaken);
        QCOMPARE(event.dropAction() == Qt::CopyAction, isTaken);
    }
};

NV_TEST_MAIN(tst_DroppedFiles)
#include "tst_DroppedFiles.moc"
