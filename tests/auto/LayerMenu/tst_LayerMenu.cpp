// The menu of the layers: what it does, when, and what it says.

#include "LayerMenu.h"

#include <QMenu>

#include "ShortMemory.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "ToolHost.h"

class tst_LayerMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_document = std::make_unique<Document>(BusyPicture(), QString(), "Picture");
        m_menu = std::make_unique<QMenu>();
        m_layers = std::make_unique<LayerMenu>(m_menu.get(), nullptr);
    }

    void cleanup()
    {
        m_layers.reset();
        m_menu.reset();
        m_document.reset();
    }

    void withoutADocumentAllIsOff()
    {
        for (const QAction* action : m_menu->actions())
            QVERIFY2(action->isSeparator() || !action->isEnabled(), qPrintable(action->text()));
        QCOMPARE(m_layers->GetLayerText(), QString());
    }

    void eachCommandIsOnWhereItCanAct()
    {
        m_layers->SetDocument(m_document.get());
        QCOMPARE(enabled(), QStringList({"New Layer", "Duplicate Layer", "Hide Layer"}));

        trigger("New Layer");
        QCOMPARE(enabled(),
                 QStringList({"New Layer", "Duplicate Layer", "Delete Layer", "Layer Below", "Hide Layer",
                              "Flatten Image"}));

        trigger("Layer Below");
        QCOMPARE(enabled(),
                 QStringList({"New Layer", "Duplicate Layer", "Delete Layer", "Layer Above", "Hide Layer",
                              "Flatten Image"}));
    }

    void flattenLeavesOneLayer()
    {
        m_layers->SetDocument(m_document.get());
        trigger("Duplicate Layer");
        trigger("Flatten Image");

        QCOMPARE(m_document->GetPixels()->GetLayerCount(), 1);
        QCOMPARE(m_document->GetUndoStack()->undoText(), QString("Flatten Image"));
        QVERIFY(!enabled().contains("Flatten Image"));
        m_document->GetUndoStack()->undo();
        QVERIFY(enabled().contains("Flatten Image"));
    }

    // What was under way may have been a layer that goes again.
    void flattenLooksAgainWhenAllElseHasEnded()
    {
        m_layers->SetDocument(m_document.get());
        trigger("New Layer");
        connect(m_layers.get(), &LayerMenu::AboutToChange, this, [&] { m_document->GetUndoStack()->undo(); });

        trigger("Flatten Image");

        QCOMPARE(m_document->GetPixels()->GetLayerCount(), 1);
        QCOMPARE(m_document->GetUndoStack()->index(), 0);
        QVERIFY(m_document->GetUndoStack()->canRedo());
    }

    void eachChangeIsAStep()
    {
        m_layers->SetDocument(m_document.get());
        QStringList steps;
        for (const char* text : {"New Layer", "Duplicate Layer", "Hide Layer", "Show Layer", "Delete Layer"})
        {
            trigger(text);
            steps += m_document->GetUndoStack()->undoText();
        }

        QCOMPARE(steps,
                 QStringList({"New Layer", "Duplicate Layer", "Hide Layer", "Show Layer", "Delete Layer"}));
        while (m_document->GetUndoStack()->canUndo())
            m_document->GetUndoStack()->undo();
        QCOMPARE(m_document->GetPixels()->GetLayerCount(), 1);
        QCOMPARE(m_document->GetPixels()->GetComposition(), BusyPicture());
    }

    void aLayerThatDoesNotFitIsRefusedWithItsSize_data()
    {
        QTest::addColumn<QString>("command");
        QTest::newRow("new") << "New Layer";
        QTest::newRow("duplicate") << "Duplicate Layer";
    }

    void aLayerThatDoesNotFitIsRefusedWithItsSize()
    {
        NV_SKIP_WITHOUT_SHORT_MEMORY();
        QFETCH(QString, command);
        QLocale::setDefault(QLocale::c());
        QImage picture(2000, 1000, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::white);
        Document document(picture, QString(), "Large");
        m_layers->SetDocument(&document);
        const QSignalSpy refused(m_layers.get(), &LayerMenu::Refused);
        {
            const ShortMemory shortMemory;
            trigger(command);
        }
        m_layers->SetDocument(nullptr);

        QCOMPARE(refused.count(), 1);
        QCOMPARE(refused.first().first().toString(),
                 QString("One more layer of 2000 by 1000 pixels needs 7.63 MiB of memory, which is more than "
                         "there is."));
        QCOMPARE(document.GetPixels()->GetLayerCount(), 1);
        QCOMPARE(document.GetUndoStack()->count(), 0);
    }

    void choosingALayerIsNoChangeOfTheDocument()
    {
        m_layers->SetDocument(m_document.get());
        trigger("New Layer");
        m_document->GetUndoStack()->setClean();

        trigger("Layer Below");
        QCOMPARE(m_document->GetPixels()->GetCurrentLayer(), 0);
        trigger("Layer Above");
        QCOMPARE(m_document->GetPixels()->GetCurrentLayer(), 1);

        QCOMPARE(m_document->GetUndoStack()->count(), 1);
        QVERIFY(m_document->GetUndoStack()->isClean());
    }

    void whatIsUnderWayIsEndedFirst()
    {
        m_layers->SetDocument(m_document.get());
        int layersThen = 0;
        connect(m_layers.get(), &LayerMenu::AboutToChange, this,
                [&] { layersThen = m_document->GetPixels()->GetLayerCount(); });

        trigger("New Layer");

        QCOMPARE(layersThen, 1);
        QCOMPARE(m_document->GetPixels()->GetLayerCount(), 2);
    }

    void theCurrentLayerIsTold()
    {
        SignalLog log(m_layers.get());
        m_layers->SetDocument(m_document.get());
        trigger("New Layer");
        trigger("Hide Layer");
        m_document->GetUndoStack()->undo();
        m_layers->SetDocument(nullptr);

        QStringList texts;
        for (const QString& entry : log.Entries())
        {
            if (entry.startsWith("LayerTextChanged") && (texts.isEmpty() || texts.last() != entry))
                texts += entry;
        }
        QCOMPARE(texts,
                 QStringList({"LayerTextChanged(\"Background\")", "LayerTextChanged(\"Layer 1\")",
                              "LayerTextChanged(\"Layer 1 (hidden)\")", "LayerTextChanged(\"Layer 1\")",
                              "LayerTextChanged(\"\")"}));
    }

    void anotherDocumentIsActedOn()
    {
        Document other(BusyPicture(), QString(), "Other");
        m_layers->SetDocument(m_document.get());
        m_layers->SetDocument(&other);

        trigger("New Layer");

        QCOMPARE(m_document->GetPixels()->GetLayerCount(), 1);
        QCOMPARE(other.GetPixels()->GetLayerCount(), 2);
        m_layers->SetDocument(nullptr);
    }

    void theDocumentMayGo()
    {
        m_layers->SetDocument(m_document.get());

        m_document.reset();

        QCOMPARE(m_layers->GetLayerText(), QString());
        QCOMPARE(enabled(), QStringList());
    }

private:
    static QString plain(const QAction* action) { return action->text().remove('&'); }

    QStringList enabled() const
    {
        QStringList texts;
        for (const QAction* action : m_menu->actions())
        {
            if (action->isEnabled() && !action->isSeparator())
                texts += plain(action);
        }
        return texts;
    }

    void trigger(const QString& text)
    {
        for (QAction* action : m_menu->actions())
        {
            if (plain(action) == text)
            {
                QVERIFY2(action->isEnabled(), qPrintable(text));
                action->trigger();
                return;
            }
        }
        QFAIL(qPrintable("no action " + text));
    }

    std::unique_ptr<Document> m_document;
    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<LayerMenu> m_layers;
};

NV_TEST_MAIN(tst_LayerMenu)
#include "tst_LayerMenu.moc"
