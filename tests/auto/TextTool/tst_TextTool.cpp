// The text tool at work: typing on the canvas by keys, the bar live, bending, committing and taking back, and
// texts that are opened again.

#include "TextTool.h"

#include <QClipboard>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QShortcut>
#include <QSignalSpy>

#include "LayerCommand.h"
#include "ModalDriver.h"
#include "NVTextToolbar.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "TilesCommand.h"
#include "ToolHost.h"

namespace
{

const QString Hebrew = QString::fromUtf8("\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d");

struct Host : ToolHost<TextTool>
{
    explicit Host(QSettings* settings, const QImage& picture = PlainPicture())
        : ToolHost<TextTool>(settings, picture)
    {
        if (settings->value("text/family").isNull())
            bar()->SetFontFamily("DejaVu Sans");
    }

    NVTextToolbar* bar() const { return tool->GetTextBar(); }
    QAbstractButton* button(const char* name) const { return bar()->findChild<QAbstractButton*>(name); }
    QComboBox* sizes() const { return bar()->findChild<QComboBox*>("m_pFontSize"); }
    // Letters of any script.
    void type(const QString& text)
    {
        for (const QChar letter : text)
        {
            const int code = letter.isLetterOrNumber() ? letter.toUpper().unicode() : 0;
            QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key(code), QString(letter),
                                Qt::NoModifier);
        }
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        QCoreApplication::processEvents();
    }
    // A text that begins at a place, in size 40.
    void write(const QString& text, double x = 20, double y = 100)
    {
        bar()->SetFontSize(40);
        click(x, y);
        type(text);
    }
    void commit() { key(Qt::Key_Return, Qt::ControlModifier); }
    QImage shown() { return composition(); }
    QRect inkOf(int index) const { return VisibleRect(pixels()->GetLayer(index).image); }
    QImage canvas() const { return view->viewport()->grab().toImage(); }
    bool isClosed() const
    {
        return !tool->IsEditing() && button("m_pCommit")->isHidden() && button("m_pCancel")->isHidden() &&
            !button("m_pWarp")->isEnabled();
    }
};

void SetBend(const QWidget* dialog, double bend)
{
    dialog->findChild<QDoubleSpinBox*>("m_pBend")->setValue(bend);
}

} // namespace

class tst_TextTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scratch = std::make_unique<ScratchSettings>(); }

    void clickOpensAnEmptyTextInALayerOfItsOwn()
    {
        Host host(settings());
        QVERIFY(host.isClosed());
        host.click(50, 100);
        QVERIFY(host.tool->IsEditing());
        QCOMPARE(host.pixels()->GetLayerCount(), 2);
        QCOMPARE(host.pixels()->GetCurrentLayer(), 1);
        QCOMPARE(host.pixels()->GetLayer(1).name, QString("Text 1"));
        QCOMPARE(host.steps()->count(), 0);
        QVERIFY(!host.button("m_pCommit")->isHidden() && !host.button("m_pCancel")->isHidden());
        QVERIFY(host.button("m_pWarp")->isEnabled());
        QVERIFY(host.view->hasFocus());
    }

    void typedLettersAppearOnTheirLineAtOnce()
    {
        Host host(settings());
        host.write("H");
        const QRect one = host.inkOf(1);
        QVERIFY(!one.isEmpty());
        QVERIFY2(qAbs(one.bottom() - 99) <= 2, qPrintable(QString::number(one.bottom())));
        QVERIFY(one.left() >= 20 && one.left() < 32);
        host.type("HH");
        QVERIFY(host.inkOf(1).width() > one.width() * 2);
        QCOMPARE(host.tool->GetText().text, QString("HHH"));
        QCOMPARE(host.pixel(one.left() + 2, one.center().y()), QColor(Qt::black));
        QCOMPARE(host.steps()->count(), 0);
    }

    void undoGoesBackThroughWhatWasTypedAndThenTakesTheTextBack()
    {
        Host host(settings());
        host.write("ab");
        host.key(Qt::Key_Home);
        host.type("x");

        QVERIFY(host.tool->Undo());
        QCOMPARE(host.tool->GetText().text, QString("ab"));
        QVERIFY(host.inkOf(1).isValid());
        host.type("y");
        QCOMPARE(host.tool->GetText().text, QString("yab"));
        QVERIFY(host.tool->Undo());
        QVERIFY(host.tool->Undo());
        QCOMPARE(host.tool->GetText().text, QString());
        QVERIFY(host.tool->IsEditing());
        QVERIFY(host.tool->Undo());
        QVERIFY(!host.tool->IsEditing());
        QCOMPARE(host.pixels()->GetLayerCount(), 1);
        QVERIFY(!host.tool->Undo());
    }

    void keysMoveDeleteAndSelect()
    {
        Host host(settings());
        host.write("ab c");
        host.key(Qt::Key_Backspace);
        host.key(Qt::Key_Home);
        host.type("x");
        host.key(Qt::Key_Delete);
        QCOMPARE(host.tool->GetText().text, QString("xb "));
        host.key(Qt::Key_Return);
        host.type("2");
        QCOMPARE(host.tool->GetText().text, QString("x\n2b "));
        host.key(Qt::Key_Up);
        host.type("1");
        QCOMPARE(host.tool->GetText().text, QString("x1\n2b "));
        host.key(Qt::Key_A, Qt::ControlModifier);
        host.key(Qt::Key_X, Qt::ControlModifier);
        QCOMPARE(host.tool->GetText().text, QString());
        host.key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(host.tool->GetText().text, QString("x1\n2b "));
        host.key(Qt::Key_Home, Qt::ControlModifier);
        host.key(Qt::Key_Right, Qt::ShiftModifier);
        QCOMPARE(host.tool->GetSelectedText(), QString("x"));
    }

    void linesStandBelowEachOther()
    {
        Host host(settings());
        host.write("H", 20, 60);
        const QRect one = host.inkOf(1);
        host.key(Qt::Key_Return);
        host.type("H");
        QVERIFY(host.inkOf(1).height() > one.height() + 30);
        QCOMPARE(host.inkOf(1).left(), one.left());
    }

    void spaceIsTypedAndDoesNotPan()
    {
        Host host(settings());
        host.write("a b");
        QCOMPARE(host.tool->GetText().text, QString("a b"));
        QCOMPARE(host.view->viewport()->cursor().shape(), Qt::IBeamCursor);
        host.commit();
        QTest::keyPress(host.view, Qt::Key_Space);
        QCOMPARE(host.view->viewport()->cursor().shape(), Qt::OpenHandCursor);
        QTest::keyRelease(host.view, Qt::Key_Space);
    }

    void toolKeysAreTypedAndReachNoShortcut()
    {
        Host host(settings());
        int fired = 0;
        const QList<QKeySequence> keys{Qt::Key_B,
                                       Qt::Key_T,
                                       Qt::SHIFT + Qt::Key_M,
                                       Qt::Key_1,
                                       Qt::Key_Delete,
                                       Qt::CTRL + Qt::Key_A,
                                       Qt::CTRL + Qt::Key_Z,
                                       Qt::CTRL + Qt::Key_V};
        for (const QKeySequence& key : keys)
        {
            auto* shortcut = new QShortcut(key, &host.window);
            connect(shortcut, &QShortcut::activated, this, [&fired] { ++fired; });
        }
        QGuiApplication::clipboard()->setText("t");
        host.click(20, 100);
        host.type("b");
        host.key(Qt::Key_V, Qt::ControlModifier);
        QTest::keyClick(host.view, 'M', Qt::ShiftModifier);
        host.type("1");
        host.key(Qt::Key_A, Qt::ControlModifier);
        host.key(Qt::Key_Delete);
        host.key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(host.tool->GetText().text, QString("btM1"));
        QCOMPARE(fired, 0);
        host.commit();
        host.type("b");
        QCOMPARE(fired, 1);
    }

    void keysThatDeleteMoreThanALetterReachNoShortcut_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("left");
        QTest::newRow("next word") << int(Qt::CTRL | Qt::Key_Delete) << "one three";
        QTest::newRow("word before") << int(Qt::CTRL | Qt::Key_Backspace) << "two three";
    }

    // Ctrl+Delete empties the layer while no text is open.
    void keysThatDeleteMoreThanALetterReachNoShortcut()
    {
        QFETCH(int, key);
        Host host(settings());
        int fired = 0;
        auto* shortcut = new QShortcut(QKeySequence(key), &host.window);
        connect(shortcut, &QShortcut::activated, this, [&fired] { ++fired; });
        host.write("one two three");
        host.key(Qt::Key_Home);
        host.key(Qt::Key_Right, Qt::ControlModifier);
        host.key(Qt::Key(key & ~Qt::KeyboardModifierMask), Qt::ControlModifier);
        QTEST(host.tool->GetText().text, "left");
        QCOMPARE(fired, 0);
        host.commit();
        host.key(Qt::Key(key & ~Qt::KeyboardModifierMask), Qt::ControlModifier);
        QCOMPARE(fired, 1);
    }

    void tabIsTypedAndKeepsTheFocus()
    {
        Host host(settings());
        host.write("a");
        host.key(Qt::Key_Tab);
        host.key(Qt::Key_Backtab, Qt::ShiftModifier);
        QVERIFY(host.view->hasFocus());
        host.type("b");
        QCOMPARE(host.tool->GetText().text, QString("a\tb"));
        host.commit();
        const QRect ink = host.inkOf(1);
        QVERIFY(ink.width() > 60);
        host.click(ink.center().x(), ink.center().y());
        QCOMPARE(host.tool->GetText().text, QString("a\tb"));
    }

    void richTextIsPastedPlain()
    {
        Host host(settings());
        auto* data = new QMimeData;
        data->setHtml("<b>bold</b><p>second");
        data->setText("bold\nsecond");
        QGuiApplication::clipboard()->setMimeData(data);
        host.write("");
        host.key(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(host.tool->GetText().text, QString("bold\nsecond"));
        const QImage shown = host.shown();
        host.commit();
        QVERIFY(host.shown() == shown);
        TextDescription description = host.pixels()->GetLayer(1).source.value<TextDescription>();
        QPoint way;
        QVERIFY(FindText(host.layer(1), description, &way));
    }

    void inputMethodShowsItsTextBeforeItIsDecided()
    {
        Host host(settings());
        host.write("H");
        QVERIFY(host.view->testAttribute(Qt::WA_InputMethodEnabled));
        const QRect one = host.inkOf(1);
        QInputMethodEvent preedit("HH", {});
        QCoreApplication::sendEvent(host.view, &preedit);
        QVERIFY(host.inkOf(1).width() > 2 * one.width());
        QCOMPARE(host.tool->GetText().text, QString("H"));
        QInputMethodEvent decided;
        decided.setCommitString("I");
        QCoreApplication::sendEvent(host.view, &decided);
        QCOMPARE(host.tool->GetText().text, QString("HI"));
        QInputMethodQueryEvent query(Qt::ImEnabled | Qt::ImCursorRectangle | Qt::ImSurroundingText);
        QCoreApplication::sendEvent(host.view, &query);
        QVERIFY(query.value(Qt::ImEnabled).toBool());
        QCOMPARE(query.value(Qt::ImSurroundingText).toString(), QString("HI"));
        const QRectF place = query.value(Qt::ImCursorRectangle).toRectF();
        QVERIFY(QRectF(host.view->viewport()->rect()).contains(place.center()));
        QVERIFY(qAbs(place.center().x() - host.at(host.inkOf(1).right(), 0).x()) < 20);
    }

    void rightToLeftTextGrowsToTheLeft()
    {
        Host host(settings());
        host.write(Hebrew.left(1), 200);
        const QRect one = host.inkOf(1);
        host.type(Hebrew.mid(1));
        const QRect all = host.inkOf(1);
        QVERIFY(qAbs(all.right() - one.right()) <= 3);
        QVERIFY(all.left() < one.left() - 20 && all.right() <= 202);
    }

    void dragGivesTheTextAWidth()
    {
        Host host(settings());
        host.bar()->SetFontSize(20);
        host.press(20, 20);
        host.move(140, 90);
        QVERIFY(!host.tool->IsEditing());
        host.release(140, 90);
        QVERIFY(host.tool->IsEditing());
        host.type("many words that do not fit");
        QCOMPARE(host.tool->GetText().width, 120);
        QVERIFY(host.inkOf(1).right() <= 141 && host.inkOf(1).height() > 50);
        QVERIFY(host.inkOf(1).top() >= 20);
    }

    void barShowsAtOnce()
    {
        Host host(settings());
        host.write("Hallo");
        const QRect plain = host.inkOf(1);
        QTest::mouseClick(host.button("m_pBold"), Qt::LeftButton);
        QVERIFY(host.tool->GetText().isBold);
        QVERIFY(host.inkOf(1).width() > plain.width());
        host.bar()->SetColor(Qt::red);
        QCOMPARE(host.tool->GetText().color, QColor(Qt::red));
        QTest::mouseClick(host.button("m_pUnderline"), Qt::LeftButton);
        QVERIFY(host.tool->GetText().isUnderlined);
        QVERIFY(host.inkOf(1).bottom() > plain.bottom());
        host.bar()->SetFontSize(20);
        QVERIFY(host.inkOf(1).width() < plain.width());
        const QString family = host.bar()->findChild<QComboBox*>("m_pFontFamily")->itemText(0);
        host.bar()->SetFontFamily(family);
        QCOMPARE(host.tool->GetText().family, family);
        QVERIFY(host.view->hasFocus());
        host.type("!");
        QCOMPARE(host.tool->GetText().text, QString("Hallo!"));
        QCOMPARE(host.steps()->count(), 0);
    }

    void smoothnessFollowsTheBox()
    {
        Host host(settings());
        host.write("Sono");
        QVERIFY(host.tool->GetText().isSmooth);
        const QImage smooth = host.layer(1);
        auto* box = host.button("m_pAliasing");
        QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(8, box->height() / 2));
        QVERIFY(!host.tool->GetText().isSmooth);
        QVERIFY(host.layer(1) != smooth);
        QVERIFY(host.view->hasFocus());
    }

    void sizeTypedIntoTheBoxShowsWithEachDigit()
    {
        Host host(settings());
        host.write("H");
        auto* edit = host.sizes()->lineEdit();
        QTest::mouseClick(edit, Qt::LeftButton);
        edit->selectAll();
        const int before = host.inkOf(1).height();
        host.type("8");
        QCOMPARE(host.tool->GetText().size, 8);
        QVERIFY(host.inkOf(1).height() < before);
        host.type("0");
        QCOMPARE(host.tool->GetText().size, 80);
        QVERIFY(host.inkOf(1).height() > before);
        host.key(Qt::Key_Backspace);
        host.key(Qt::Key_Backspace);
        QCOMPARE(host.tool->GetText().size, 8);
        host.type("60");
        host.key(Qt::Key_Return);
        QVERIFY(host.view->hasFocus());
        host.type("H");
        QCOMPARE(host.tool->GetText().text, QString("HH"));
        QCOMPARE(host.tool->GetText().size, 60);
    }

    void escapeInTheSizeBoxLeavesTheBoxAlone()
    {
        Host host(settings());
        host.write("H");
        QTest::mouseClick(host.sizes()->lineEdit(), Qt::LeftButton);
        QVERIFY(!host.view->hasFocus());
        host.key(Qt::Key_Escape);
        QVERIFY(host.view->hasFocus());
        QVERIFY(host.tool->IsEditing());
        host.key(Qt::Key_Escape);
        QVERIFY(!host.tool->IsEditing());
    }

    void commitMakesOneStep_data()
    {
        QTest::addColumn<QString>("way");
        for (const char* way : {"keys", "button", "click beside", "other tool", "other document"})
            QTest::newRow(way) << way;
    }

    void commitMakesOneStep()
    {
        QFETCH(QString, way);
        Host host(settings());
        const QImage before = host.shown();
        host.write("Hallo");
        const QImage typed = host.shown();
        if (way == "keys")
            host.commit();
        else if (way == "button")
            QTest::mouseClick(host.button("m_pCommit"), Qt::LeftButton);
        else if (way == "click beside")
            host.click(280, 190);
        else if (way == "other tool")
            host.tool->Deactivate();
        else
            host.tool->SetCanvas(nullptr, nullptr);
        QVERIFY(host.isClosed());
        QCOMPARE(host.steps()->count(), 1);
        QCOMPARE(host.steps()->undoText(), QString("Text"));
        QVERIFY(host.shown() == typed);
        host.steps()->undo();
        QCOMPARE(host.pixels()->GetLayerCount(), 1);
        QVERIFY(host.shown() == before);
        host.steps()->redo();
        QVERIFY(host.shown() == typed);
    }

    void clickBesideCommitsAndTheNextOneBegins()
    {
        Host host(settings());
        host.write("Hallo");
        host.click(280, 190);
        QVERIFY(!host.tool->IsEditing());
        QCOMPARE(host.pixels()->GetLayerCount(), 2);
        host.click(280, 190);
        QVERIFY(host.tool->IsEditing());
        QCOMPARE(host.pixels()->GetLayer(2).name, QString("Text 2"));
    }

    void takingBackLeavesNothing_data()
    {
        QTest::addColumn<QString>("way");
        for (const char* way : {"escape", "button", "call"})
            QTest::newRow(way) << way;
    }

    void takingBackLeavesNothing()
    {
        QFETCH(QString, way);
        Host host(settings());
        const QImage before = host.shown();
        host.write("Hallo");
        QSignalSpy said(host.tool.get(), &Tool::Message);
        if (way == "escape")
            host.key(Qt::Key_Escape);
        else if (way == "button")
            QTest::mouseClick(host.button("m_pCancel"), Qt::LeftButton);
        else
            QVERIFY(host.tool->Cancel());
        QCOMPARE(said.last().first().toString(), QString("The text was taken back."));
        QVERIFY(host.isClosed());
        QVERIFY(!host.tool->Cancel());
        QCOMPARE(host.steps()->count(), 0);
        QCOMPARE(host.pixels()->GetLayerCount(), 1);
        QVERIFY(host.shown() == before);
    }

    void textWithoutAVisibleLetterLeavesNothing()
    {
        Host host(settings());
        host.write("  ");
        host.commit();
        QVERIFY(host.isClosed());
        QCOMPARE(host.steps()->count(), 0);
        QCOMPARE(host.pixels()->GetLayerCount(), 1);
    }

    void textIsOpenedAgainByAClick()
    {
        Host host(settings());
        host.bar()->SetColor(Qt::red);
        host.bar()->SetFontStyle(2);
        host.write("Hallo");
        host.commit();
        host.bar()->SetColor(Qt::blue);
        host.bar()->SetFontStyle(0);
        host.bar()->SetFontSize(20);
        const QImage before = host.shown();
        const QRect ink = host.inkOf(1);
        host.click(ink.right() - 1, ink.center().y());
        QVERIFY(host.tool->IsEditing());
        QCOMPARE(host.pixels()->GetLayerCount(), 2);
        QCOMPARE(host.tool->GetText().text, QString("Hallo"));
        QCOMPARE(host.bar()->GetColor(), QColor(Qt::red));
        QCOMPARE(host.bar()->GetFontStyle(), 2);
        QCOMPARE(host.bar()->GetFontSize(), 40);
        QVERIFY(host.shown() == before);
        host.key(Qt::Key_End);
        host.type("!");
        host.bar()->SetFontStyle(1);
        const QImage after = host.shown();
        host.commit();
        QCOMPARE(host.steps()->count(), 2);
        QCOMPARE(host.steps()->undoText(), QString("Edit Text"));
        host.steps()->undo();
        QVERIFY(host.shown() == before);
        host.steps()->redo();
        QVERIFY(host.shown() == after);
        host.steps()->undo();
        host.click(ink.center().x(), ink.center().y());
        QCOMPARE(host.tool->GetText().text, QString("Hallo"));
        QVERIFY(host.tool->GetText().isItalic);
    }

    void openedTextTakenBackIsAsBefore()
    {
        Host host(settings());
        host.write("Hallo");
        host.commit();
        const QImage before = host.shown();
        host.pixels()->SetCurrentLayer(0);
        const QPoint middle = host.inkOf(1).center();
        host.click(middle.x(), middle.y());
        QCOMPARE(host.pixels()->GetCurrentLayer(), 1);
        host.type("more");
        host.bar()->SetFontSize(100);
        QVERIFY(host.shown() != before);
        QSignalSpy said(host.tool.get(), &Tool::Message);
        host.key(Qt::Key_Escape);
        QCOMPARE(said.last().first().toString(), QString("The text is as it was before."));
        QVERIFY(host.isClosed());
        QVERIFY(host.shown() == before);
        QCOMPARE(host.steps()->count(), 1);
        QCOMPARE(host.pixels()->GetCurrentLayer(), 0);
    }

    void openedTextCommittedUnchangedIsNoStep()
    {
        Host host(settings());
        host.write("Hallo");
        host.commit();
        const QPoint middle = host.inkOf(1).center();
        host.click(middle.x(), middle.y());
        host.commit();
        QCOMPARE(host.steps()->count(), 1);
        QVERIFY(host.isClosed());
    }

    void emptiedTextGoesWithItsLayer()
    {
        Host host(settings());
        host.write("Hallo");
        host.commit();
        const QImage before = host.shown();
        const QPoint middle = host.inkOf(1).center();
        host.click(middle.x(), middle.y());
        host.key(Qt::Key_A, Qt::ControlModifier);
        host.key(Qt::Key_Delete);
        host.commit();
        QCOMPARE(host.pixels()->GetLayerCount(), 1);
        QCOMPARE(host.steps()->count(), 2);
        host.steps()->undo();
        QVERIFY(host.shown() == before);
        host.click(middle.x(), middle.y());
        QCOMPARE(host.tool->GetText().text, QString("Hallo"));
    }

    void movedTextIsOpenedWhereItIs()
    {
        Host host(settings());
        host.write("Hallo");
        host.commit();
        const QRect ink = host.inkOf(1);
        QImage moved(host.pixels()->GetSize(), QImage::Format_ARGB32_Premultiplied);
        moved.fill(Qt::transparent);
        QPainter(&moved).drawImage(ink.topLeft() + QPoint(30, 70), host.layer(1), ink);
        host.pixels()->EditLayer(1) = moved;
        host.pixels()->NotifyChanged(host.pixels()->GetRect());
        const QImage before = host.shown();
        host.click(ink.center().x() + 30, ink.center().y() + 70);
        QCOMPARE(host.tool->GetText().text, QString("Hallo"));
        QVERIFY(host.shown() == before);
    }

    void paintedTextStaysAPictureUntilThePaintIsUndone()
    {
        Host host(settings());
        host.write("Hallo");
        host.commit();
        const QPoint middle = host.inkOf(1).center();
        const QRect all = host.pixels()->GetRect();
        QVector<SavedTile> tiles = {{all, host.layer(1)}};
        host.pixels()->EditLayer(1).setPixel(2, 2, 0xff123456);
        host.steps()->push(new TilesCommand("Paint", host.pixels(), 1, tiles));
        host.click(middle.x(), middle.y());
        QCOMPARE(host.tool->GetText().text, QString());
        QCOMPARE(host.pixels()->GetLayerCount(), 3);
        host.key(Qt::Key_Escape);
        host.steps()->undo();
        host.click(middle.x(), middle.y());
        QCOMPARE(host.tool->GetText().text, QString("Hallo"));
    }

    void copyOfATextIsOneToo()
    {
        Host host(settings());
        host.write("Hallo");
        host.commit();
        host.steps()->push(new LayerCommand(LayerCommand::Duplicate, host.pixels(), 1));
        const QPoint middle = host.inkOf(1).center();
        host.click(middle.x(), middle.y());
        QCOMPARE(host.tool->GetText().text, QString("Hallo"));
        QCOMPARE(host.pixels()->GetCurrentLayer(), 2);
    }

    void hiddenTextIsNotOpened()
    {
        Host host(settings());
        host.write("Hallo");
        host.commit();
        const QPoint middle = host.inkOf(1).center();
        host.pixels()->SetLayerVisible(1, false);
        host.click(middle.x(), middle.y());
        QCOMPARE(host.tool->GetText().text, QString());
    }

    void pointerPlacesTheCursorAndSelects()
    {
        Host host(settings());
        host.write("HHHH");
        const QRect ink = host.inkOf(1);
        host.click(ink.left() + 1, ink.center().y());
        host.type("x");
        QCOMPARE(host.tool->GetText().text, QString("xHHHH"));
        const QRect now = host.inkOf(1);
        host.press(now.right(), now.center().y());
        host.move(now.right() - ink.width() / 2, now.center().y());
        host.release(now.right() - ink.width() / 2, now.center().y());
        QCOMPARE(host.tool->GetSelectedText(), QString("HH"));
        host.type("y");
        QCOMPARE(host.tool->GetText().text, QString("xHHy"));
        host.click(ink.left() + 1, ink.center().y());
        host.click(host.inkOf(1).right(), ink.center().y(), Qt::ShiftModifier);
        QCOMPARE(host.tool->GetSelectedText().size(), 4);
    }

    void doubleClickSelectsTheWord()
    {
        Host host(settings());
        host.bar()->SetFontSize(30);
        host.click(20, 100);
        host.type("one two");
        const QRect ink = host.inkOf(1);
        const QPoint place = host.at(ink.right() - 8, ink.center().y());
        for (int i = 0; i < 2; ++i)
        {
            QMouseEvent press(QEvent::MouseButtonPress, place, host.view->viewport()->mapToGlobal(place),
                              Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
            press.setTimestamp(ulong(10000 + i * 100));
            QCoreApplication::sendEvent(host.view->viewport(), &press);
            QMouseEvent release(QEvent::MouseButtonRelease, place, host.view->viewport()->mapToGlobal(place),
                                Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
            QCoreApplication::sendEvent(host.view->viewport(), &release);
        }
        QCOMPARE(host.tool->GetSelectedText(), QString("two"));
    }

    void bentTextKeepsItsLettersUnderThePointer()
    {
        Host host(settings());
        host.write("HHHHHH", 20, 110);
        const QRect straight = host.inkOf(1);
        NVTextDeformation bent;
        bent.SetBend(100);
        host.bar()->SetDeformation(bent);
        QVERIFY(host.inkOf(1).height() > straight.height() + 20);
        // In the second half the wave is down: there the straight place of the letters is empty.
        const double x = straight.left() + straight.width() * 0.75;
        const double down = straight.center().y() + 18;
        QCOMPARE(host.pixel(int(x), straight.top() + 1), QColor(Qt::white));
        host.click(x, down);
        QVERIFY(host.tool->IsEditing());
        host.type("x");
        const int place = host.tool->GetText().text.indexOf('x');
        QVERIFY2(place == 4 || place == 5, qPrintable(host.tool->GetText().text));
    }

    void warpIsLiveAndComesBackOnCancel()
    {
        Host host(settings());
        host.write("Hallo", 20, 120);
        const QImage straight = host.shown();
        const ModalDriver driver(
            [&](QWidget* dialog)
            {
                SetBend(dialog, 80);
                QVERIFY(host.shown() != straight);
                const QImage once = host.shown();
                SetBend(dialog, -80);
                QVERIFY(host.shown() != once);
                ModalDriver::PressKey(dialog, Qt::Key_Escape);
            });
        QTest::mouseClick(host.button("m_pWarp"), Qt::LeftButton);
        QVERIFY(driver.Finished());
        QVERIFY(host.tool->IsEditing());
        QVERIFY(host.shown() == straight);
        QCOMPARE(host.steps()->count(), 0);
    }

    void acceptedWarpIsPartOfTheOneStep()
    {
        Host host(settings());
        host.write("Hallo", 20, 120);
        QImage bent;
        const ModalDriver driver(
            [&](QWidget* dialog)
            {
                SetBend(dialog, 80);
                dialog->findChild<QAbstractButton*>("m_pVertical")->click();
                bent = host.shown();
                ModalDriver::Press(dialog, QDialogButtonBox::Ok);
            });
        QTest::mouseClick(host.button("m_pWarp"), Qt::LeftButton);
        QVERIFY(driver.Finished());
        QVERIFY(host.shown() == bent);
        QVERIFY(host.tool->GetText().warp.isVertical);
        host.view->setFocus();
        host.commit();
        QVERIFY(host.shown() == bent);
        QCOMPARE(host.steps()->count(), 1);
        // The next text begins straight; this one opens bent.
        host.click(280, 190);
        QVERIFY(IsStraight(host.tool->GetText().warp));
        host.key(Qt::Key_Escape);
        const QPoint middle = host.inkOf(1).center();
        host.click(middle.x(), middle.y());
        QCOMPARE(host.bar()->GetDeformation().GetBend(), 80.0);
        QCOMPARE(host.bar()->GetDeformation().GetOrientation(), NVTextDeformation::OrientationVertical);
    }

    void styleNoneBendsNothing()
    {
        Host host(settings());
        host.write("Hallo");
        const QImage straight = host.shown();
        NVTextDeformation none;
        none.SetStyle(NVTextDeformation::StyleNone);
        none.SetBend(70);
        host.bar()->SetDeformation(none);
        QVERIFY(host.shown() == straight);
    }

    void canvasShowsFrameAndCursor()
    {
        Host host(settings());
        const QImage before = host.canvas();
        host.write("H");
        const QImage open = host.canvas();
        const QRect changed = DifferenceOf(before, open);
        const QRect ink(host.at(host.inkOf(1).left(), host.inkOf(1).top()),
                        host.at(host.inkOf(1).right(), host.inkOf(1).bottom()));
        QVERIFY(changed.contains(ink.adjusted(-2, -2, 2, 2)));
        host.key(Qt::Key_A, Qt::ControlModifier);
        QVERIFY(host.canvas() != open);
        host.commit();
        const QRect rest = DifferenceOf(before, host.canvas());
        QVERIFY(ink.adjusted(-3, -3, 3, 3).contains(rest));
    }

    void valuesAreKept()
    {
        {
            Host host(settings());
            host.bar()->SetFontSize(73);
            host.bar()->SetFontStyle(5);
            host.bar()->SetColor(QColor(1, 2, 3, 100));
            host.bar()->SetAntialiasing(false);
        }
        Host again(settings());
        QCOMPARE(again.bar()->GetFontSize(), 73);
        QCOMPARE(again.bar()->GetFontStyle(), 5);
        QCOMPARE(again.bar()->GetColor(), QColor(1, 2, 3, 100));
        QVERIFY(!again.bar()->IsAntialiasing());
        again.click(20, 100);
        QCOMPARE(again.tool->GetText().size, 73);
    }

    void wildSettingsAreCut()
    {
        settings()->setValue("text/size", 123456);
        settings()->setValue("text/style", -1);
        settings()->setValue("text/color", "no color");
        settings()->setValue("text/family", "No Such Family");
        const Host host(settings());
        QCOMPARE(host.bar()->GetFontSize(), 300);
        QCOMPARE(host.bar()->GetFontStyle(), 7);
        QCOMPARE(host.bar()->GetColor(), QColor(Qt::black));
    }

    void undoStepsOfOthersStayInOrder()
    {
        Host host(settings(), BusyPicture());
        const QImage before = host.shown();
        host.write("one");
        host.commit();
        host.write("two", 20, 190);
        host.commit();
        QCOMPARE(host.steps()->count(), 2);
        host.steps()->undo();
        host.steps()->undo();
        QVERIFY(host.shown() == before);
        host.steps()->redo();
        host.steps()->redo();
        QCOMPARE(host.pixels()->GetLayerCount(), 3);
    }

    void documentMayGoWhileATextIsOpen()
    {
        Host host(settings());
        host.write("Hallo");
        host.closeDocument();
        QVERIFY(host.isClosed());
    }

    void toolMayGoWhileATextIsOpen()
    {
        Host host(settings());
        host.write("Hallo");
        host.tool.reset();
        QCOMPARE(host.pixels()->GetLayerCount(), 1);
        QCOMPARE(host.steps()->count(), 0);
    }

    void otherButtonsDoNothing()
    {
        Host host(settings());
        host.mouse(QEvent::MouseButtonPress, 50, 50, Qt::RightButton, Qt::RightButton);
        host.mouse(QEvent::MouseButtonRelease, 50, 50, Qt::RightButton, Qt::NoButton);
        QVERIFY(!host.tool->IsEditing());
    }

private:
    QSettings* settings() { return &m_scratch->settings; }

    std::unique_ptr<ScratchSettings> m_scratch;
};

NV_TEST_MAIN(tst_TextTool)
#include "tst_TextTool.moc"
