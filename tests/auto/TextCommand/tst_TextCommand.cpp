// The steps of a text: a new one with its layer, and another text in its layer.

#include "TextCommand.h"

#include <QPainter>
#include <QUndoStack>
#include <QtTest>

#include "TestMain.h"

namespace
{

QImage Picture(const QColor& color)
{
    QImage image(60, 40, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

QImage WithBox(const QRect& box, const QColor& color)
{
    QImage image = Picture(Qt::transparent);
    QPainter painter(&image);
    painter.fillRect(box, color);
    return image;
}

KXDocumentInterface::Layer TextLayer(const QRect& box)
{
    KXDocumentInterface::Layer layer;
    layer.name = "Text 1";
    layer.image = WithBox(box, Qt::red);
    layer.opacity = 60;
    layer.source = QString("red");
    return layer;
}

const QRect Box(10, 10, 20, 15);

} // namespace

class tst_TextCommand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newTextGoesAndComesWithItsLayer()
    {
        KXDocumentInterface document(Picture(Qt::white));
        QUndoStack stack;
        QVERIFY(document.InsertLayer(1, TextLayer(Box)));
        const QImage with = document.GetComposition().copy();
        stack.push(new NewTextCommand(&document, 1, Box, 0));
        QCOMPARE(document.GetLayerCount(), 2);
        QCOMPARE(stack.undoText(), QString("Text"));
        for (int i = 0; i < 2; ++i)
        {
            stack.undo();
            QCOMPARE(document.GetLayerCount(), 1);
            QCOMPARE(document.GetCurrentLayer(), 0);
            stack.redo();
            QCOMPARE(document.GetLayerCount(), 2);
            QCOMPARE(document.GetCurrentLayer(), 1);
            QCOMPARE(document.GetLayer(1).name, QString("Text 1"));
            QCOMPARE(document.GetLayer(1).opacity, 60);
            QCOMPARE(document.GetLayer(1).source.toString(), QString("red"));
            QVERIFY(document.GetLayer(1).image == WithBox(Box, Qt::red));
            QVERIFY(document.GetComposition() == with);
        }
    }

    void newTextHoldsPixelsWhileItIsUndoneAlone()
    {
        KXDocumentInterface document(Picture(Qt::white));
        QUndoStack stack;
        QVERIFY(document.InsertLayer(1, TextLayer(Box)));
        auto* step = new NewTextCommand(&document, 1, Box, 0);
        stack.push(step);
        QCOMPARE(step->GetMemoryBytes(), 0);
        stack.undo();
        QCOMPARE(step->GetMemoryBytes(), 20 * 15 * 4);
        QCOMPARE(step->GetBytes(), step->GetMemoryBytes());
        step->MoveToDisk();
        QCOMPARE(step->GetMemoryBytes(), 0);
        QCOMPARE(step->GetBytes(), 20 * 15 * 4);
        stack.redo();
        QVERIFY(document.GetLayer(1).image == WithBox(Box, Qt::red));
        QCOMPARE(step->GetBytes(), 0);
    }

    void editedTextIsExchangedWithItsSource()
    {
        KXDocumentInterface document(Picture(Qt::white));
        QUndoStack stack;
        QVERIFY(document.InsertLayer(1, TextLayer(Box)));
        const QRect area(5, 5, 40, 30);
        const SavedTile before{area, document.GetLayer(1).image.copy(area)};
        const QImage after = WithBox(QRect(20, 12, 25, 20), Qt::blue);
        document.EditLayer(1) = after;
        document.SetLayerSource(1, QString("blue"));
        auto* step = new EditTextCommand(&document, 1, before, QString("red"));
        stack.push(step);
        QCOMPARE(stack.undoText(), QString("Edit Text"));
        QVERIFY(document.GetLayer(1).image == after);
        QCOMPARE(step->GetMemoryBytes(), 40 * 30 * 4);
        step->MoveToDisk();
        QCOMPARE(step->GetMemoryBytes(), 0);
        QSignalSpy changes(&document, &KXDocumentInterface::CompositionChanged);
        for (int i = 0; i < 2; ++i)
        {
            stack.undo();
            QVERIFY(document.GetLayer(1).image == WithBox(Box, Qt::red));
            QCOMPARE(document.GetLayer(1).source.toString(), QString("red"));
            stack.redo();
            QVERIFY(document.GetLayer(1).image == after);
            QCOMPARE(document.GetLayer(1).source.toString(), QString("blue"));
        }
        QCOMPARE(changes.count(), 4);
        QCOMPARE(changes.constFirst().constFirst().toRect(), area);
    }
};

NV_TEST_MAIN(tst_TextCommand)
#include "tst_TextCommand.moc"
