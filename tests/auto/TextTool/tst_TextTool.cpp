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
#include <QTextBlock>
#include <QTextDocument>

#include "CropTool.h"
#include "ImageMenu.h"
#include "LayerCommand.h"
#include "MainWindow.h"
#include "ModalDriver.h"
#include "MoveTool.h"
#include "NVApplication.h"
#include "NVTextToolbar.h"
#include "ShortMemory.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "TilesCommand.h"
#include "ToolHost.h"

namespace
{

const QString Hebrew = QString::fromUtf8("\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d");
const QString Alef = QString::fromUtf8("\xd7\x90");

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
    // Letters that an input method shows and has not decided.
    void compose(const QString& letters, bool isUnderlined = false)
    {
        QTextCharFormat format;
        format.setFontUnderline(isUnderlined);
        QInputMethodEvent event(letters,
                                {{QInputMethodEvent::TextFormat, 0, letters.size(), QVariant(format)}});
        QCoreApplication::sendEvent(view, &event);
    }
    void decide(const QString& letters)
    {
        QInputMethodEvent event;
        event.setCommitString(letters);
        QCoreApplication::sendEvent(view, &event);
    }
    // What the layer holds is what its stored text gives.
    bool isTrueToItsText(int index) const
    {
        const KXDocumentInterface::Layer& layer = pixels()->GetLayer(index);
        QPoint way(1, 1);
        return FindText(layer.image, layer.source.value<TextDescription>(), &way) && way.isNull();
    }
    // The columns of the canvas in which this row of the document is another, from document column to column.
    int countChanged(const QImage& before, const QImage& after, double y, double from, double to) const
    {
        int count = 0;
        for (int x = at(from, y).x(); x < at(to, y).x(); ++x)
            count += before.pixel(x, at(from, y).y()) != after.pixel(x, at(from, y).y());
        return count;
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

// The whole editor with a text of size 40, the real tools and the real menus. Coordinates are document
// pixels.
struct Editor
{
    explicit Editor(QSettings* settings) : window(Prepared(settings))
    {
        window.show();
        window.activateWindow();
        (void)QTest::qWaitForWindowActive(&window);
        window.OpenImage(PlainPicture(), "Picture");
    }

    static QSettings* Prepared(QSettings* settings)
    {
        settings->setValue("text/family", "DejaVu Sans");
        settings->setValue("text/size", 40);
        return settings;
    }
    template <class T>
    T* choose()
    {
        window.ChooseTool(window.FindTool<T>());
        return window.FindTool<T>();
    }
    TextTool* text() const { return window.FindTool<TextTool>(); }
    KXDocumentInterface* pixels() const { return window.GetDocument()->GetPixels(); }
    QUndoStack* steps() const { return window.GetDocument()->GetUndoStack(); }
    QImage shown() const { return pixels()->GetComposition().copy(); }
    QRect ink() const { return VisibleRect(pixels()->GetLayer(1).image); }
    void mouse(QEvent::Type type, const QPoint& place, Qt::MouseButton button, Qt::MouseButtons buttons)
    {
        QWidget* canvas = window.GetView()->viewport();
        const QPoint at = window.GetView()->MapFromDocument(place + QPointF(0.5, 0.5)).toPoint();
        QMouseEvent event(type, at, canvas->mapToGlobal(at), button, buttons, Qt::NoModifier);
        QCoreApplication::sendEvent(canvas, &event);
    }
    void drag(const QPoint& from, const QPoint& to)
    {
        mouse(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
        mouse(QEvent::MouseMove, (from + to) / 2, Qt::NoButton, Qt::LeftButton);
        mouse(QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton);
        mouse(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
    }
    void click(const QPoint& place)
    {
        mouse(QEvent::MouseButtonPress, place, Qt::LeftButton, Qt::LeftButton);
        mouse(QEvent::MouseButtonRelease, place, Qt::LeftButton, Qt::NoButton);
    }
    // On the text, and what opens then.
    QString open()
    {
        choose<TextTool>();
        click(ink().center());
        return text()->GetText().text;
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        QCoreApplication::processEvents();
    }
    void write(const QString& letters, const QPoint& place)
    {
        choose<TextTool>();
        click(place);
        QTest::keyClicks(window.GetView(), letters);
        key(Qt::Key_Return, Qt::ControlModifier);
    }
    void move(const QPoint& way)
    {
        choose<MoveTool>();
        drag(QPoint(150, 100), QPoint(150, 100) + way);
        text()->Finish();
    }
    bool resizeCanvas(const QSize& size, const QPoint& anchor)
    {
        return window.findChild<ImageMenu*>()->ResizeCanvas(size, anchor);
    }

    MainWindow window;
};

// Where letters and cursors of a text are, before it is bent.
struct Letters
{
    explicit Letters(const TextDescription& description)
    {
        document.setPlainText(description.text);
        LayOutText(document, description);
        frame = TextFrame(document, description);
    }
    // In the first line.
    double x(int position) const
    {
        const QTextLayout& layout = *document.firstBlock().layout();
        return frame.left() + layout.position().x() + layout.lineAt(0).cursorToX(position);
    }

    QTextDocument document;
    QRectF frame;
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

    void redoBringsBackWhatUndoTook()
    {
        Host host(settings());
        const SignalLog log(host.tool.get());
        host.write("ab");
        QVERIFY(!host.tool->CanRedo() && !host.tool->Redo());
        const QImage typed = host.shown();
        QVERIFY(host.tool->Undo());
        QVERIFY(host.tool->CanRedo());
        QVERIFY(host.tool->Redo());
        QCOMPARE(host.tool->GetText().text, QString("ab"));
        QVERIFY(host.shown() == typed);
        QVERIFY(!host.tool->CanRedo());
        QVERIFY(host.tool->Undo());
        host.commit();
        QVERIFY(!host.tool->CanRedo() && !host.tool->Redo());
        QCOMPARE(log.Count("CanRedoChanged"), 4);
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

    void undecidedLettersAreUnderlinedAsTheInputMethodSays()
    {
        Host host(settings());
        host.write("");
        host.compose("HH");
        const QRect plain = host.inkOf(1);
        host.compose("HH", true);
        const QRect lined = host.inkOf(1);
        QVERIFY(lined.bottom() >= plain.bottom() + 2);
        QVERIFY(lined.width() >= plain.width());
        host.decide("HH");
        QCOMPARE(host.inkOf(1), plain);
    }

    void theLineOfUndecidedLettersIsNotBelowTheOthers()
    {
        Host host(settings());
        host.write("HH");
        const QRect first = host.inkOf(1);
        host.compose("HH", true);
        const QImage layer = host.layer(1);
        const QRect all = host.inkOf(1);
        const QImage below = layer.copy(0, first.bottom() + 2, layer.width(), 10);
        QVERIFY(VisibleRect(below).left() > first.right());
        QVERIFY(VisibleRect(below).right() >= all.right() - 3);
    }

    void compositionIsPartOfWhatIsCommitted_data()
    {
        QTest::addColumn<QString>("way");
        for (const char* way : {"keys", "button", "click beside", "other tool"})
            QTest::newRow(way) << way;
    }

    void compositionIsPartOfWhatIsCommitted()
    {
        QFETCH(QString, way);
        Host host(settings());
        host.write("H");
        host.compose("HI");
        const QImage typed = host.shown();
        if (way == "keys")
            host.commit();
        else if (way == "button")
            QTest::mouseClick(host.button("m_pCommit"), Qt::LeftButton);
        else if (way == "click beside")
            host.click(280, 190);
        else
            host.tool->Deactivate();
        QVERIFY(host.isClosed());
        QVERIFY(host.shown() == typed);
        QCOMPARE(host.pixels()->GetLayer(1).source.value<TextDescription>().text, QString("HHI"));
        QVERIFY(host.isTrueToItsText(1));
        QCOMPARE(host.steps()->count(), 1);
    }

    void compositionAloneIsAText()
    {
        Host host(settings());
        host.write("");
        host.compose("HI");
        host.commit();
        QCOMPARE(host.pixels()->GetLayerCount(), 2);
        QVERIFY(host.isTrueToItsText(1));
    }

    void compositionGoesWithATextThatIsTakenBack()
    {
        Host host(settings());
        host.write("Hallo");
        host.commit();
        const QImage before = host.shown();
        const QPoint middle = host.inkOf(1).center();
        host.click(middle.x(), middle.y());
        host.compose("HHHHHH");
        QVERIFY(host.shown() != before);
        host.key(Qt::Key_Escape);
        QVERIFY(host.shown() == before);
        host.click(middle.x(), middle.y());
        QCOMPARE(host.tool->GetText().text, QString("Hallo"));
        QVERIFY(host.shown() == before);
    }

    void compositionTakesTheStyleOfTheBarAndGoesOn()
    {
        Host host(settings());
        host.write("H");
        host.compose("HH");
        const QRect plain = host.inkOf(1);
        QTest::mouseClick(host.button("m_pBold"), Qt::LeftButton);
        QVERIFY(host.inkOf(1).width() > plain.width());
        host.decide("I");
        QCOMPARE(host.tool->GetText().text, QString("HI"));
        host.commit();
        QVERIFY(host.isTrueToItsText(1));
    }

    void compositionIsWhatUndoTakesBackFirst()
    {
        Host host(settings());
        host.write("H");
        const QImage one = host.shown();
        host.compose("HH");
        QVERIFY(host.tool->Undo());
        QVERIFY(host.tool->IsEditing());
        QCOMPARE(host.tool->GetText().text, QString("H"));
        QVERIFY(host.shown() == one);
        QVERIFY(host.tool->Redo());
        QCOMPARE(host.tool->GetText().text, QString("HHH"));
    }

    void aClickIntoTheTextEndsTheComposition()
    {
        Host host(settings());
        host.write("HH");
        const QRect ink = host.inkOf(1);
        host.compose("I");
        host.click(ink.left() + 1, ink.center().y());
        QCOMPARE(host.tool->GetText().text, QString("HHI"));
        host.type("x");
        QCOMPARE(host.tool->GetText().text, QString("xHHI"));
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
        QCOMPARE(host.pixel(host.inkOf(1).left() + 3, host.inkOf(1).center().y()), QColor(Qt::red));
        QTest::mouseClick(host.button("m_pUnderline"), Qt::LeftButton);
        QVERIFY(host.tool->GetText().isUnderlined);
        QVERIFY(host.inkOf(1).bottom() > plain.bottom());
        host.bar()->SetFontSize(20);
        QVERIFY(host.inkOf(1).width() < plain.width());
        const QImage sans = host.layer(1);
        host.bar()->SetFontFamily("DejaVu Sans Mono");
        QCOMPARE(host.tool->GetText().family, QString("DejaVu Sans Mono"));
        QVERIFY(host.layer(1) != sans);
        const QRect mono = host.inkOf(1);
        host.bar()->SetFontFamily("DejaVu Sans");
        QVERIFY(host.layer(1) == sans);
        QVERIFY(mono != host.inkOf(1));
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

    void withoutMemoryForAStepTheTextIsAsBefore()
    {
        NV_SKIP_WITHOUT_SHORT_MEMORY();
        Host host(settings(), PlainPicture(Qt::white, QSize(1800, 500)));
        host.bar()->SetFontSize(300);
        host.click(20, 350);
        host.type("HHHHHH");
        host.commit();
        const QImage before = host.shown();
        const QPoint middle = host.inkOf(1).center();
        host.click(middle.x(), middle.y());
        host.type("I");
        QVERIFY(host.shown() != before);
        QSignalSpy said(host.tool.get(), &Tool::Message);
        {
            const ShortMemory shortage;
            host.tool->Commit();
        }
        QVERIFY(host.isClosed());
        QVERIFY(said.last().first().toString().contains("not enough memory"));
        QVERIFY(host.shown() == before);
        QCOMPARE(host.steps()->count(), 1);
        host.click(middle.x(), middle.y());
        QCOMPARE(host.tool->GetText().text, QString("HHHHHH"));
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
        QTRY_VERIFY(host.view->hasFocus());
        host.type("!");
        QCOMPARE(host.tool->GetText().text, QString("Hallo!"));
        bent = host.shown();
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

    void theKeysComeBackFromEachDialog_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<int>("key");
        for (const char* button : {"m_pWarp", "m_pColor"})
        {
            QTest::addRow("%s accepted", button) << button << int(Qt::Key_Return);
            QTest::addRow("%s cancelled", button) << button << int(Qt::Key_Escape);
        }
    }

    void theKeysComeBackFromEachDialog()
    {
        QFETCH(QString, button);
        QFETCH(int, key);
        Host host(settings());
        host.write("a");
        const ModalDriver driver([key](QWidget* dialog) { ModalDriver::PressKey(dialog, Qt::Key(key)); });
        QTest::mouseClick(host.button(qPrintable(button)), Qt::LeftButton);
        QVERIFY(driver.Finished());
        QTRY_VERIFY(host.view->hasFocus());
        host.type("b");
        QCOMPARE(host.tool->GetText().text, QString("ab"));
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

    // Nothing else of the canvas changes when the cursor goes.
    void cursorStandsAtItsLetter()
    {
        Host host(settings());
        host.write("HHH");
        const Letters letters(host.tool->GetText());
        const QImage end = host.canvas();
        host.key(Qt::Key_Home);
        const QRect ways = DifferenceOf(end, host.canvas());
        QVERIFY(qAbs(ways.left() + 2 - host.at(letters.x(0), 0).x()) <= 2);
        QVERIFY(qAbs(ways.right() - 1 - host.at(letters.x(3), 0).x()) <= 2);
        QVERIFY(qAbs(ways.top() - host.at(0, letters.frame.top()).y()) <= 3);
        QVERIFY(qAbs(ways.bottom() - host.at(0, letters.frame.bottom()).y()) <= 3);
        const QImage home = host.canvas();
        const QPoint middle = host.at(letters.x(0), letters.frame.center().y());
        int dark = 255;
        for (int x = middle.x() - 1; x <= middle.x() + 1; ++x)
            dark = qMin(dark, qGray(home.pixel(x, middle.y())));
        QVERIFY2(dark < 140, qPrintable(QString::number(dark)));
    }

    void cursorStandsInItsLine()
    {
        Host host(settings());
        host.write("HHH", 20, 60);
        host.key(Qt::Key_Return);
        host.type("H");
        host.key(Qt::Key_Home);
        const QImage second = host.canvas();
        host.key(Qt::Key_Up);
        const QImage first = host.canvas();
        const Letters letters(host.tool->GetText());
        const QRect ways = DifferenceOf(first, second);
        QVERIFY(ways.width() <= 6);
        QVERIFY(qAbs(ways.top() - host.at(0, letters.frame.top()).y()) <= 3);
        QVERIFY(qAbs(ways.bottom() - host.at(0, letters.frame.bottom()).y()) <= 3);
        host.key(Qt::Key_Right);
        const QRect inFirst = DifferenceOf(first, host.canvas());
        QVERIFY(inFirst.bottom() < ways.center().y() + 4);
    }

    void cursorStandsInALineThatWasBroken()
    {
        Host host(settings());
        host.bar()->SetFontSize(30);
        host.press(20, 20);
        host.move(140, 90);
        host.release(140, 90);
        host.type("HHH HHH");
        const Letters letters(host.tool->GetText());
        const double height = letters.frame.height() / 2;
        const QImage end = host.canvas();
        host.key(Qt::Key_Home);
        const QRect ways = DifferenceOf(end, host.canvas());
        QVERIFY(qAbs(ways.top() - host.at(0, letters.frame.top() + height).y()) <= 3);
        QVERIFY(qAbs(ways.bottom() - host.at(0, letters.frame.bottom()).y()) <= 3);
    }

    void cursorOfABentTextIsOnTheWave()
    {
        Host host(settings());
        host.write("HHHHHHHH", 20, 110);
        NVTextDeformation bent;
        bent.SetBend(100);
        host.bar()->SetDeformation(bent);
        const TextDescription text = host.tool->GetText();
        const Letters letters(text);
        // In the second half the wave is down.
        host.key(Qt::Key_Left);
        host.key(Qt::Key_Left);
        const QImage before = host.canvas();
        host.key(Qt::Key_Home);
        const QImage after = host.canvas();
        const QPointF straight(letters.x(6), letters.frame.center().y());
        const QPointF place = WarpPoint(straight, letters.frame, text.warp);
        QVERIFY(place.y() > straight.y() + 12);
        const double bottom = place.y() + letters.frame.height() / 2 - 3;
        QVERIFY(host.countChanged(before, after, bottom, place.x() - 4, place.x() + 4) >= 1);
        QCOMPARE(host.countChanged(before, after, letters.frame.top() + 3, place.x() - 4, place.x() + 4), 0);
    }

    void selectionLiesOverItsLettersAlone()
    {
        Host host(settings());
        host.write("ab" + Hebrew);
        const Letters letters(host.tool->GetText());
        const QFontMetricsF metrics(letters.document.defaultFont());
        const double b = letters.frame.left() + metrics.horizontalAdvance('a');
        const double hebrew = letters.frame.left() + metrics.horizontalAdvance("ab");
        const double top = letters.frame.top() + 2;
        host.key(Qt::Key_Home);
        host.key(Qt::Key_Right);
        const QImage before = host.canvas();
        host.key(Qt::Key_Right, Qt::ShiftModifier);
        QCOMPARE(host.tool->GetSelectedText(), QString("b"));
        const QImage one = host.canvas();
        QVERIFY(host.countChanged(before, one, top, b + 3, hebrew - 3) >= int(hebrew - b) - 7);
        QVERIFY(host.countChanged(before, one, top, hebrew + 1, letters.frame.right() + 5) <= 5);
        host.key(Qt::Key_End, Qt::ShiftModifier);
        QCOMPARE(host.tool->GetSelectedText(), "b" + Hebrew);
        const int wide = host.countChanged(before, host.canvas(), top, hebrew + 1, letters.frame.right() - 1);
        QVERIFY(wide >= int(letters.frame.right() - hebrew) - 6);
    }

    void selectionOfARightToLeftTextBeginsAtTheRight()
    {
        Host host(settings());
        host.write(Hebrew, 250);
        const Letters letters(host.tool->GetText());
        QVERIFY(letters.x(0) > letters.x(1) && letters.x(1) > letters.x(2));
        host.key(Qt::Key_Home);
        const QImage before = host.canvas();
        host.key(Qt::Key_Left, Qt::ShiftModifier);
        QCOMPARE(host.tool->GetSelectedText(), Hebrew.left(1));
        const double top = letters.frame.top() + 2;
        const QImage after = host.canvas();
        QVERIFY(host.countChanged(before, after, top, letters.x(1) + 3, letters.x(0) - 3) >=
                int(letters.x(0) - letters.x(1)) - 7);
        QCOMPARE(host.countChanged(before, after, top, letters.frame.left(), letters.x(1) - 4), 0);
    }

    void pointerPlacesTheCursorInRightToLeftText()
    {
        Host host(settings());
        host.write(Hebrew, 250);
        const QRect ink = host.inkOf(1);
        host.click(ink.right(), ink.center().y());
        host.type(Alef);
        QCOMPARE(host.tool->GetText().text, Alef + Hebrew);
        const QRect now = host.inkOf(1);
        host.click(now.left(), now.center().y());
        host.type(Alef);
        QCOMPARE(host.tool->GetText().text, Alef + Hebrew + Alef);
    }

    void pointerPlacesTheCursorInAMixedLine()
    {
        Host host(settings());
        host.write("ab" + Hebrew);
        const Letters letters(host.tool->GetText());
        const double y = letters.frame.center().y();
        // A letter's left half in a word to the left, and behind the last one of the line.
        host.click(letters.x(3) + 2, y);
        host.type(Alef);
        QCOMPARE(host.tool->GetText().text, "ab" + Hebrew.left(1) + Alef + Hebrew.mid(1));
        host.click(letters.frame.left() + 1, y);
        host.type("x");
        QCOMPARE(host.tool->GetText().text, "xab" + Hebrew.left(1) + Alef + Hebrew.mid(1));
    }

    void arrowKeysGoWhereTheyPoint()
    {
        Host host(settings());
        host.write(Hebrew, 250);
        host.key(Qt::Key_Home);
        host.key(Qt::Key_Left);
        host.type(Alef);
        QCOMPARE(host.tool->GetText().text, Hebrew.left(1) + Alef + Hebrew.mid(1));
        host.key(Qt::Key_Right);
        host.key(Qt::Key_Right);
        host.type(Alef);
        QCOMPARE(host.tool->GetText().text, Alef + Hebrew.left(1) + Alef + Hebrew.mid(1));
    }

    void croppedTextOpensWhereItIs()
    {
        Editor editor(settings());
        editor.write("Hallo", QPoint(90, 100));
        const QImage whole = editor.shown();
        const QRect ink = editor.ink();
        editor.choose<CropTool>();
        editor.drag(QPoint(60, 40), QPoint(280, 180));
        editor.key(Qt::Key_Return);
        QVERIFY(editor.pixels()->GetSize().width() < 230);
        QCOMPARE(editor.ink().size(), ink.size());
        const QImage cropped = editor.shown();

        QCOMPARE(editor.open(), QString("Hallo"));
        QCOMPARE(editor.pixels()->GetLayerCount(), 2);
        QVERIFY(editor.shown() == cropped);
        editor.key(Qt::Key_End);
        QTest::keyClicks(editor.window.GetView(), "!");
        editor.key(Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(editor.steps()->undoText(), QString("Edit Text"));
        QVERIFY(editor.ink().width() > ink.width());

        editor.steps()->undo();
        QVERIFY(editor.shown() == cropped);
        QCOMPARE(editor.open(), QString("Hallo"));
        editor.key(Qt::Key_Escape);
        editor.steps()->undo();
        QVERIFY(editor.shown() == whole);
        QCOMPARE(editor.open(), QString("Hallo"));
        QVERIFY(editor.shown() == whole);
    }

    void textThatACropCutsOpensWhole()
    {
        Editor editor(settings());
        editor.write("Hallo", QPoint(90, 100));
        editor.choose<CropTool>();
        const int width = editor.ink().width();
        editor.drag(QPoint(editor.ink().center().x(), 40), QPoint(290, 180));
        editor.key(Qt::Key_Return);
        const QImage cropped = editor.shown();
        QVERIFY(editor.ink().width() < width * 2 / 3);

        QCOMPARE(editor.open(), QString("Hallo"));
        QVERIFY(editor.shown() == cropped);
        editor.key(Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(editor.steps()->count(), 2);
    }

    void textOnAnotherCanvasOpensWhereItIs_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QPoint>("anchor");
        QTest::addColumn<bool>("cuts");
        QTest::newRow("larger to the right") << QSize(500, 400) << QPoint(0, 0) << false;
        QTest::newRow("larger to the left") << QSize(500, 400) << QPoint(2, 2) << false;
        QTest::newRow("larger all around") << QSize(401, 301) << QPoint(1, 1) << false;
        QTest::newRow("smaller, cut at the left") << QSize(160, 200) << QPoint(2, 0) << true;
        QTest::newRow("smaller, cut at the right") << QSize(140, 200) << QPoint(0, 0) << true;
        QTest::newRow("smaller, cut above") << QSize(300, 112) << QPoint(0, 2) << true;
        QTest::newRow("smaller, cut below") << QSize(300, 88) << QPoint(0, 0) << true;
        QTest::newRow("smaller, cut at both sides") << QSize(60, 200) << QPoint(1, 1) << true;
        QTest::newRow("smaller, cut at a corner") << QSize(160, 112) << QPoint(2, 2) << true;
    }

    void textOnAnotherCanvasOpensWhereItIs()
    {
        QFETCH(const QSize, size);
        QFETCH(const QPoint, anchor);
        QFETCH(const bool, cuts);
        Editor editor(settings());
        editor.write("Hallo", QPoint(100, 100));
        const QRect ink = editor.ink();
        QVERIFY(editor.resizeCanvas(size, anchor));
        QCOMPARE(editor.ink().size() != ink.size(), cuts);
        const QImage before = editor.shown();

        QCOMPARE(editor.open(), QString("Hallo"));
        QVERIFY(editor.shown() == before);
        QCOMPARE(editor.pixels()->GetLayerCount(), 2);
        editor.key(Qt::Key_Escape);
        QVERIFY(editor.shown() == before);
        editor.steps()->undo();
        QCOMPARE(editor.open(), QString("Hallo"));
        QCOMPARE(editor.ink(), ink);
    }

    void textMovedPartlyOffOpensWhole_data()
    {
        QTest::addColumn<QPoint>("way");
        QTest::newRow("left") << QPoint(-130, 0);
        QTest::newRow("right") << QPoint(130, 0);
        QTest::newRow("up") << QPoint(0, -85);
        QTest::newRow("down") << QPoint(10, 112);
        QTest::newRow("corner") << QPoint(-120, -80);
    }

    void textMovedPartlyOffOpensWhole()
    {
        QFETCH(const QPoint, way);
        Editor editor(settings());
        editor.write("Hallo", QPoint(100, 100));
        const QRect ink = editor.ink();
        editor.move(way);
        const QImage moved = editor.shown();
        QVERIFY(editor.ink().size() != ink.size());
        QVERIFY(ink.translated(way).contains(editor.ink()));

        QCOMPARE(editor.open(), QString("Hallo"));
        QVERIFY(editor.shown() == moved);
        editor.key(Qt::Key_End);
        QTest::keyClicks(editor.window.GetView(), "!");
        editor.key(Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(editor.pixels()->GetLayerCount(), 2);
        editor.steps()->undo();
        QVERIFY(editor.shown() == moved);
        QCOMPARE(editor.open(), QString("Hallo"));
        editor.key(Qt::Key_Escape);
        editor.steps()->undo();
        QCOMPARE(editor.ink(), ink);
        QCOMPARE(editor.open(), QString("Hallo"));
    }

    // What the edge has cut off comes back with the text, and goes with it.
    void textThatTheEdgeCutOpensWholeWhereverItIs_data()
    {
        QTest::addColumn<bool>("isMoved");
        QTest::newRow("moved inwards") << true;
        QTest::newRow("on a larger canvas") << false;
    }

    void textThatTheEdgeCutOpensWholeWhereverItIs()
    {
        QFETCH(const bool, isMoved);
        Editor editor(settings());
        editor.write("Hallo", QPoint(240, 100));
        QCOMPARE(editor.ink().right(), 299);
        const int width = editor.ink().width();
        if (isMoved)
            editor.move(QPoint(-100, 20));
        else
            QVERIFY(editor.resizeCanvas(QSize(450, 200), QPoint(0, 0)));
        const QImage before = editor.shown();
        QSignalSpy said(editor.text(), &Tool::Message);

        QCOMPARE(editor.open(), QString("Hallo"));
        QVERIFY(editor.ink().width() > width + 10);
        editor.key(Qt::Key_Escape);
        QCOMPARE(said.last().first().toString(), QString("The text is as it was before."));
        QVERIFY(editor.shown() == before);
        QCOMPARE(editor.steps()->count(), 2);

        QCOMPARE(editor.open(), QString("Hallo"));
        const QImage whole = editor.shown();
        editor.key(Qt::Key_Return, Qt::ControlModifier);
        QVERIFY(editor.shown() == whole);
        QCOMPARE(editor.steps()->count(), 3);
        QCOMPARE(editor.steps()->undoText(), QString("Edit Text"));
        editor.steps()->undo();
        QVERIFY(editor.shown() == before);
        QCOMPARE(editor.open(), QString("Hallo"));
        editor.key(Qt::Key_Escape);
        editor.steps()->redo();
        QVERIFY(editor.shown() == whole);
        QCOMPARE(editor.open(), QString("Hallo"));
        editor.key(Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(editor.steps()->index(), 3);
    }

    void textOfWhichAPartWasErasedIsAPicture()
    {
        Host host(settings());
        host.write("Hallo");
        host.commit();
        const QRect ink = host.inkOf(1);
        const QRect last(ink.right() - 20, 0, 40, 200);
        QPainter painter(&host.pixels()->EditLayer(1));
        painter.setCompositionMode(QPainter::CompositionMode_Clear);
        painter.fillRect(last, Qt::transparent);
        painter.end();
        host.pixels()->NotifyChanged(last);
        host.click(ink.left() + 2, ink.center().y());
        QCOMPARE(host.tool->GetText().text, QString());
    }

    void theThemeReachesPicturesOfTheBar()
    {
        Host host(settings());
        const auto pictures = [&host]
        {
            auto* label = host.bar()->findChild<QLabel*>("m_pPicture");
            return QVector<QImage>{label->pixmap(Qt::ReturnByValue).toImage(),
                                   host.button("m_pCommit")->icon().pixmap(16, 16).toImage(),
                                   host.button("m_pCancel")->icon().pixmap(16, 16).toImage()};
        };
        const QVector<QImage> light = pictures();
        // The darker two have no picture of their own for what is green and red.
        NVApplication::GetInstance()->SetTheme(1);
        host.tool->UpdateTheme();
        const QVector<QImage> dark = pictures();
        NVApplication::GetInstance()->SetTheme(0);
        for (int i = 0; i < light.size(); ++i)
            QVERIFY2(dark.at(i) != light.at(i), qPrintable(QString::number(i)));
    }

    void valuesAreKept()
    {
        {
            Host host(settings());
            host.bar()->SetFontFamily("DejaVu Serif");
            host.bar()->SetFontSize(73);
            host.bar()->SetFontStyle(5);
            host.bar()->SetColor(QColor(1, 2, 3, 100));
            host.bar()->SetAntialiasing(false);
        }
        Host again(settings());
        QCOMPARE(again.bar()->GetFontFamily(), QString("DejaVu Serif"));
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
