#include "TextTool.h"

#include <QApplication>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QSettings>
#include <QStyleHints>
#include <QUndoStack>

#include "Document.h"
#include "KXDocumentInterface.h"
#include "LayerCommand.h"
#include "NVTextToolbar.h"
#include "TextCommand.h"
#include "TextEdit.h"
#include "Theme.h"

namespace
{

// A press that moves less to the side, in device-independent pixels, gives no width.
const double DragDistance = 8;
const int MaxSize = 300;
const int DefaultSize = 50;

const int BoldBit = 1;
const int ItalicBit = 2;
const int UnderlineBit = 4;

const QLatin1String FamilyKey("text/family");
const QLatin1String SizeKey("text/size");
const QLatin1String StyleKey("text/style");
const QLatin1String ColorKey("text/color");
const QLatin1String AntialiasingKey("text/antialiasing");

TextWarp ToWarp(const NVTextDeformation& deformation)
{
    TextWarp warp;
    warp.isFlag = deformation.GetStyle() == NVTextDeformation::StyleFlag;
    warp.isVertical = deformation.GetOrientation() == NVTextDeformation::OrientationVertical;
    warp.bend = deformation.GetBend();
    warp.horizontalDistortion = deformation.GetHorizontalDistortion();
    warp.verticalDistortion = deformation.GetVerticalDistortion();
    return warp;
}

NVTextDeformation ToDeformation(const TextWarp& warp)
{
    NVTextDeformation deformation;
    deformation.SetStyle(warp.isFlag ? NVTextDeformation::StyleFlag : NVTextDeformation::StyleNone);
    deformation.SetOrientation(warp.isVertical ? NVTextDeformation::OrientationVertical
                                               : NVTextDeformation::OrientationHorizontal);
    deformation.SetBend(warp.bend);
    deformation.SetHorizontalDistortion(warp.horizontalDistortion);
    deformation.SetVerticalDistortion(warp.verticalDistortion);
    return deformation;
}

int ToMask(const TextDescription& description)
{
    return (description.isBold ? BoldBit : 0) | (description.isItalic ? ItalicBit : 0) |
        (description.isUnderlined ? UnderlineBit : 0);
}

// "Text" and the first number that no layer has yet.
QString NewTextName(const KXDocumentInterface* pixels)
{
    for (int number = 1;; ++number)
    {
        const QString name = TextTool::tr("Text %1").arg(number);
        bool isTaken = false;
        for (int i = 0; i < pixels->GetLayerCount(); ++i)
            isTaken |= pixels->GetLayer(i).name == name;
        if (!isTaken)
            return name;
    }
}

QPointer<QWidget> SizeBoxOf(const QWidget* bar)
{
    return bar->findChild<QWidget*>(QStringLiteral("m_pFontSize"));
}

} // namespace

TextTool::TextTool(QSettings* settings, QObject* parent) : Tool(parent), m_pSettings(settings) { }

TextTool::~TextTool()
{
    TextTool::Cancel();
}

NVTextToolbar* TextTool::GetTextBar()
{
    return static_cast<NVTextToolbar*>(GetBar());
}

bool TextTool::IsEditing() const
{
    return bool(m_pEdit);
}

TextDescription TextTool::GetText() const
{
    return m_pEdit ? m_pEdit->GetDescription() : TextDescription();
}

QString TextTool::GetSelectedText() const
{
    return m_pEdit ? m_pEdit->GetSelectedText() : QString();
}

QString TextTool::GetName() const
{
    return tr("Text");
}

QString TextTool::GetPictureName() const
{
    return QStringLiteral("tool-text");
}

QKeySequence TextTool::GetKey() const
{
    return Qt::Key_T;
}

void TextTool::StoreValues()
{
    const NVTextToolbar* bar = GetTextBar();
    m_pSettings->setValue(FamilyKey, bar->GetFontFamily());
    m_pSettings->setValue(SizeKey, m_size);
    m_pSettings->setValue(StyleKey, bar->GetFontStyle());
    m_pSettings->setValue(ColorKey, bar->GetColor().name(QColor::HexArgb));
    m_pSettings->setValue(AntialiasingKey, bar->IsAntialiasing());
}

bool TextTool::Cancel()
{
    m_press = NoPress;
    if (!m_pEdit)
        return false;
    if (GetDocument())
        RestoreLayer();
    EndEdit();
    // What it has not decided is nothing for the next text.
    QGuiApplication::inputMethod()->reset();
    Q_EMIT Message(m_isNew ? tr("The text was taken back.") : tr("The text is as it was before."));
    return true;
}

bool TextTool::Undo()
{
    return (m_pEdit && m_pEdit->Undo()) || Cancel();
}

bool TextTool::Redo()
{
    return m_pEdit && m_pEdit->Redo();
}

void TextTool::Finish()
{
    m_press = NoPress;
    Commit();
}

// Escape in the size box leaves the box, not the text.
bool TextTool::eventFilter(QObject* object, QEvent* event)
{
    const bool isKey = event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress;
    if (!isKey || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape)
        return Tool::eventFilter(object, event);
    event->accept();
    if (event->type() == QEvent::KeyPress)
        OnReturnFocus();
    return true;
}

void TextTool::Commit()
{
    if (!m_pEdit)
        return;
    StoreValues();
    m_pEdit->EndComposition();
    // What was told meanwhile is over.
    QString message;
    if (m_pEdit->GetArea().isEmpty())
        CommitNothing();
    else if (m_isNew)
        CommitNew();
    else if (!CommitChange())
        message = tr("There is not enough memory for the change: the text is as it was before.");
    Q_EMIT Message(message);
}

QWidget* TextTool::CreateBar()
{
    auto* bar = new NVTextToolbar(nullptr);
    RestoreValues(bar);
    ConnectBar(bar);
    bar->SetCommitVisible(false);
    bar->SetCancelVisible(false);
    bar->SetWarpEnabled(false);
    SizeBoxOf(bar)->installEventFilter(this);
    return bar;
}

void TextTool::UpdateBarTheme(QWidget* bar)
{
    SetBarPicture(bar, QStringLiteral("m_pPicture"), QStringLiteral("tool-bar-text"));
    bar->findChild<QPushButton*>(QStringLiteral("m_pCommit"))
        ->setIcon(Theme::Icon(QStringLiteral("commit_btn1")));
    bar->findChild<QPushButton*>(QStringLiteral("m_pCancel"))
        ->setIcon(Theme::Icon(QStringLiteral("cancel_btn1")));
}

void TextTool::Equip(NVDocumentView* view)
{
    view->SetToolCursor(Qt::IBeamCursor);
    view->SetOverlay([this](QPainter& painter) { DrawOverlay(painter); });
}

void TextTool::Pressed(const CanvasPoint& point)
{
    if (point.button != Qt::LeftButton)
        return;
    m_from = point.position;
    m_to = point.position;
    if (m_pEdit && m_pEdit->Contains(point.position))
        PressInText(point);
    else if (m_pEdit)
        Commit();
    else if (!OpenTextAt(point.position))
        m_press = PlacePress;
    m_time = point.timestamp;
    m_point = point.position;
}

void TextTool::Moved(const CanvasPoint& point)
{
    if (m_press == NoPress)
        return;
    m_to = point.position;
    if (m_press == SelectPress && m_pEdit)
        m_pEdit->PlaceCursor(point.position, true);
    else
        GetView()->UpdateOverlay(GetView()->viewport()->rect());
}

void TextTool::Released(const CanvasPoint& point)
{
    const Press press = m_press;
    m_press = NoPress;
    if (press != PlacePress)
        return;
    QRectF place = QRectF(m_from, point.position).normalized();
    if (place.width() * GetView()->GetScale() < DragDistance)
        place = QRectF(m_from, QSizeF(0, 0));
    BeginText(place);
}

void TextTool::OnStyleChanged()
{
    if (m_pEdit && !m_isLoadingBar)
        m_pEdit->SetStyle(CurrentStyle());
}

void TextTool::OnSizeChanged(int size)
{
    if (size < 1)
        return;
    m_size = qMin(size, MaxSize);
    OnStyleChanged();
}

void TextTool::OnWarpChanged()
{
    if (m_pEdit && !m_isLoadingBar)
        m_pEdit->SetWarp(ToWarp(GetTextBar()->GetDeformation()));
}

void TextTool::OnReturnFocus()
{
    // The one change that the bar has no other signal for.
    OnStyleChanged();
    if (m_pEdit)
        m_pEdit->TakeFocus();
    else if (GetView())
        GetView()->setFocus();
}

void TextTool::OnCancel()
{
    Cancel();
}

void TextTool::OnDocumentGone()
{
    m_press = NoPress;
    EndEdit();
}

void TextTool::RestoreValues(NVTextToolbar* bar)
{
    bar->SetFontFamily(m_pSettings->value(FamilyKey, QFontInfo(QApplication::font()).family()).toString());
    m_size = qBound(1, m_pSettings->value(SizeKey, DefaultSize).toInt(), MaxSize);
    bar->SetFontSize(m_size);
    bar->SetFontStyle(m_pSettings->value(StyleKey, 0).toInt() & (BoldBit | ItalicBit | UnderlineBit));
    const QColor color(m_pSettings->value(ColorKey).toString());
    bar->SetColor(color.isValid() ? color : QColor(Qt::black));
    bar->SetAntialiasing(m_pSettings->value(AntialiasingKey, true).toBool());
}

void TextTool::ConnectBar(NVTextToolbar* bar)
{
    connect(bar, &NVTextToolbar::FontFamilyChanged, this, &TextTool::OnStyleChanged);
    connect(bar, &NVTextToolbar::FontStyleChanged, this, &TextTool::OnStyleChanged);
    connect(bar, &NVTextToolbar::FontSizeChanged, this, &TextTool::OnSizeChanged);
    connect(bar, &NVTextToolbar::ColorChanged, this, &TextTool::OnStyleChanged);
    connect(bar, &NVTextToolbar::DeformationCorrected, this, &TextTool::OnWarpChanged);
    connect(bar, &NVTextToolbar::DeformationChanged, this, &TextTool::OnWarpChanged);
    connect(bar, &NVTextToolbar::ReturnFocus, this, &TextTool::OnReturnFocus);
    connect(bar, &NVTextToolbar::Commit, this, &TextTool::Commit);
    connect(bar, &NVTextToolbar::Cancel, this, &TextTool::OnCancel);
}

TextDescription TextTool::CurrentStyle()
{
    const NVTextToolbar* bar = GetTextBar();
    TextDescription style;
    style.family = bar->GetFontFamily();
    style.size = m_size;
    style.isBold = bar->GetFontStyle() & BoldBit;
    style.isItalic = bar->GetFontStyle() & ItalicBit;
    style.isUnderlined = bar->GetFontStyle() & UnderlineBit;
    style.color = bar->GetColor();
    style.isSmooth = bar->IsAntialiasing();
    style.warp = ToWarp(bar->GetDeformation());
    return style;
}

void TextTool::LoadBar(const TextDescription& description)
{
    NVTextToolbar* bar = GetTextBar();
    m_isLoadingBar = true;
    bar->SetFontFamily(description.family);
    bar->SetFontSize(description.size);
    bar->SetFontStyle(ToMask(description));
    bar->SetColor(description.color);
    bar->SetAntialiasing(description.isSmooth);
    bar->SetDeformation(ToDeformation(description.warp));
    m_isLoadingBar = false;
}

KXDocumentInterface* TextTool::GetPixels() const
{
    return GetDocument()->GetPixels();
}

// The topmost of those that lie there.
bool TextTool::OpenTextAt(const QPointF& point)
{
    for (int i = GetPixels()->GetLayerCount() - 1; i >= 0; --i)
    {
        if (OpenText(i, point))
            return true;
    }
    return false;
}

// Whole, even if the layer shows only a part of it.
bool TextTool::OpenText(int index, const QPointF& point)
{
    KXDocumentInterface* pixels = GetPixels();
    const KXDocumentInterface::Layer& layer = pixels->GetLayer(index);
    auto description = layer.source.value<TextDescription>();
    if (!layer.visible || description.text.isEmpty())
        return false;
    const QRect visible = VisibleRect(layer.image);
    QPoint way;
    if (!visible.contains(point.toPoint()) || !FindText(layer.image, description, &way))
        return false;
    m_pictureBefore = {layer.image.copy(visible), visible.topLeft()};
    if (m_pictureBefore.image.isNull())
        return false;
    description.anchor += way;
    description.shown = QRect();
    m_isNew = false;
    m_layerBefore = pixels->GetCurrentLayer();
    m_before = description;
    LoadBar(description);
    pixels->SetCurrentLayer(index);
    BeginEdit(index, description);
    m_pEdit->PlaceCursor(point, false);
    return true;
}

// A place without width is that of a base line.
void TextTool::BeginText(const QRectF& place)
{
    KXDocumentInterface* pixels = GetPixels();
    KXDocumentInterface::Layer layer;
    layer.name = NewTextName(pixels);
    layer.image = QImage(pixels->GetSize(), QImage::Format_ARGB32_Premultiplied);
    layer.image.fill(Qt::transparent);
    m_layerBefore = pixels->GetCurrentLayer();
    const int index = m_layerBefore + 1;
    if (!pixels->InsertLayer(index, layer))
    {
        Q_EMIT Message(tr("There is not enough memory for another layer."));
        return;
    }
    m_isLoadingBar = true;
    GetTextBar()->SetDeformation(NVTextDeformation());
    m_isLoadingBar = false;
    TextDescription description = CurrentStyle();
    description.width = qRound(place.width());
    description.anchor = place.topLeft().toPoint();
    if (description.width == 0)
        description.anchor.ry() -= qRound(QFontMetricsF(TextFont(description)).ascent());
    m_isNew = true;
    m_pictureBefore = TextPicture();
    BeginEdit(index, description);
}

void TextTool::BeginEdit(int layer, const TextDescription& description)
{
    m_pEdit = std::make_unique<TextEdit>(GetView(), GetPixels(), layer, description);
    connect(m_pEdit.get(), &TextEdit::CommitAsked, this, &TextTool::Commit, Qt::QueuedConnection);
    connect(m_pEdit.get(), &TextEdit::RedoAvailable, this, &TextTool::SetRedoLive);
    connect(GetDocument(), &QObject::destroyed, this, &TextTool::OnDocumentGone);
    NVTextToolbar* bar = GetTextBar();
    bar->SetCommitVisible(true);
    bar->SetCancelVisible(true);
    bar->SetWarpEnabled(true);
    SetEscapeLive(true);
    Q_EMIT Message(tr("Ctrl+Enter sets the text down, and so does a click beside it. Escape takes it back."));
}

void TextTool::PressInText(const CanvasPoint& point)
{
    m_pEdit->TakeFocus();
    if (IsSecondPress(point))
    {
        m_pEdit->SelectWord();
        return;
    }
    m_press = SelectPress;
    m_pEdit->PlaceCursor(point.position, point.modifiers.testFlag(Qt::ShiftModifier));
}

// Of a double click.
bool TextTool::IsSecondPress(const CanvasPoint& point)
{
    const double way = (point.position - m_point).manhattanLength() * GetView()->GetScale();
    return m_time > 0 && point.timestamp - m_time < ulong(QApplication::doubleClickInterval()) &&
        way < QApplication::startDragDistance();
}

// The layer of a text that was opened goes with it, unless it is the only one.
void TextTool::CommitNothing()
{
    const int layer = m_pEdit->GetLayer();
    RestoreLayer();
    EndEdit();
    if (!m_isNew && GetPixels()->GetLayerCount() > 1)
        GetDocument()->GetUndoStack()->push(new LayerCommand(LayerCommand::Delete, GetPixels(), layer));
}

// With how much of it the layer has.
QVariant TextTool::GetSource() const
{
    TextDescription description = m_pEdit->GetDescription();
    description.shown = m_pEdit->GetArea().translated(-description.anchor);
    return QVariant::fromValue(description);
}

void TextTool::CommitNew()
{
    KXDocumentInterface* pixels = GetPixels();
    const int layer = m_pEdit->GetLayer();
    pixels->SetLayerSource(layer, GetSource());
    auto* step = new NewTextCommand(pixels, layer, m_pEdit->GetArea(), m_layerBefore);
    EndEdit();
    GetDocument()->GetUndoStack()->push(step);
}

// Its pixels may be others even if nothing was typed: it is opened whole.
bool TextTool::IsChanged() const
{
    const QRect area = m_pEdit->GetArea();
    return !(m_pEdit->GetDescription() == m_before) || area != m_pictureBefore.GetRect() ||
        GetPixels()->GetLayer(m_pEdit->GetLayer()).image.copy(area) != m_pictureBefore.image;
}

// Without the memory for a step the text stays as it was, and false is returned.
bool TextTool::CommitChange()
{
    KXDocumentInterface* pixels = GetPixels();
    const int layer = m_pEdit->GetLayer();
    const QRect area = m_pEdit->GetArea() | m_pictureBefore.GetRect();
    const bool isChanged = IsChanged();
    QImage before(area.size(), QImage::Format_ARGB32_Premultiplied);
    if (isChanged && before.isNull())
        RestoreLayer();
    const QVariant source = GetSource();
    EndEdit();
    if (!isChanged || before.isNull())
        return !isChanged;
    before.fill(Qt::transparent);
    QPainter painter(&before);
    painter.drawImage(m_pictureBefore.corner - area.topLeft(), m_pictureBefore.image);
    painter.end();
    const QVariant sourceBefore = pixels->GetLayer(layer).source;
    pixels->SetLayerSource(layer, source);
    GetDocument()->GetUndoStack()->push(new EditTextCommand(pixels, layer, {area, before}, sourceBefore));
    return true;
}

// As it was before the text was opened.
void TextTool::RestoreLayer()
{
    KXDocumentInterface* pixels = GetPixels();
    const int layer = m_pEdit->GetLayer();
    if (m_isNew)
        pixels->RemoveLayer(layer);
    else
    {
        const QRect area = m_pEdit->GetArea() | m_pictureBefore.GetRect();
        QPainter painter(&pixels->EditLayer(layer));
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(area, Qt::transparent);
        painter.drawImage(m_pictureBefore.corner, m_pictureBefore.image);
        painter.end();
        pixels->NotifyChanged(area);
    }
    pixels->SetCurrentLayer(m_layerBefore);
}

void TextTool::EndEdit()
{
    m_pEdit.reset();
    NVTextToolbar* bar = GetTextBar();
    bar->SetCommitVisible(false);
    bar->SetCancelVisible(false);
    bar->SetWarpEnabled(false);
    SetEscapeLive(false);
    SetRedoLive(false);
    if (GetDocument())
        disconnect(GetDocument(), nullptr, this, nullptr);
}

void TextTool::DrawOverlay(QPainter& painter)
{
    if (m_pEdit)
        m_pEdit->DrawOverlay(painter);
    if (m_press != PlacePress || qAbs(m_to.x() - m_from.x()) * GetView()->GetScale() < DragDistance)
        return;
    const QRectF box(GetView()->MapFromDocument(m_from), GetView()->MapFromDocument(m_to));
    painter.setPen(QPen(Qt::white, 1));
    painter.drawRect(box.normalized());
    painter.setPen(QPen(Qt::black, 1, Qt::DashLine));
    painter.drawRect(box.normalized());
}
