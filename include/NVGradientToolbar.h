#pragma once

#include <QList>
#include <QWidget>

#include "NVGradientStop.h"
#include "generaltoolsgui_export.h"

class QPixmap;

// The option bar of the gradient tool: the current gradient as a picture on the button of its popup, and how
// it is drawn. The popup holds the list of gradients; the host loads it and, told by SaveGradients(), reads
// it back.
//
// "Style" is the ping pong state throughout. A signal tells a change by hand and by slot alike, and never
// goes out for the value that is there already. GUI thread only.
class GENERALTOOLSGUI_EXPORT NVGradientToolbar : public QWidget
{
    Q_OBJECT

public:
    explicit NVGradientToolbar(QWidget* parent);
    // Deletes the popup too.
    ~NVGradientToolbar() override;

    // -1 if no gradient is current.
    int GetCurrentGradientIndex() const;
    // 0 "Linear gradient", 1 "Circular gradient", 2 "Diamond gradient", 3 "Angle gradient"; -1 when nothing
    // is selected.
    int GetType() const;
    // Whether every second repetition runs backwards; default false.
    bool GetStyle() const;
    // At least 1, the default.
    int GetRepeatCount() const;
    // 0 "Normal" to 12 "Addition", in the order of the list; -1 when nothing is selected.
    int GetBlendMode() const;
    // Percent, 0 to 100, default 100.
    int GetOpacity() const;
    // Whether the gradient goes on outside of the selected area; default true.
    bool IsOutside() const;
    // Whether the gradient is run backwards, which the button shows; default false.
    bool IsReverse() const;
    bool IsPopupVisible() const;

    int GetGradientCount() const;
    // A copy. The caller passes an index that exists; for others an empty list comes back.
    QList<NVGradientStop> GetGradient(int index) const;
    // Needs a current gradient.
    QList<NVGradientStop> GetCurrentGradient() const;

    // Replaces the list; its first gradient becomes current.
    void Load(const QList<QList<NVGradientStop>>& gradients);
    // Fills the list of types in the language of the moment; the first one is selected then.
    void FillTypeList();
    // Draws the gradient at that row on the button; any row but the current one blanks the button.
    void GradientChanged(int row);

public Q_SLOTS:
    // Both do the same. With a row that doesn't exist no gradient is current afterwards.
    void SetCurrentGradientIndex(int row);
    void SetCurrentGradient(int row);
    // An index that is not in the list leaves it without a selection.
    void SetType(int index);
    void SetStyle(bool pingPong);
    // Clamped to what the box allows.
    void SetRepeatCount(int count);
    // An index that is not in the list leaves it without a selection.
    void SetBlendMode(int index);
    void SetOutside(bool outside);
    // Percent, clamped to 0 to 100.
    void SetOpacity(int percent);
    void SetReverse(bool reverse);
    // The buttons that emit Commit() and Cancel(); hidden at first.
    void ShowOperationButtons(bool visible);
    // Does nothing; hosts connect to it.
    void EnablePickerControl(bool enabled);

Q_SIGNALS:
    // The button shows the gradient already. -1 if no gradient is current. Also sent, with the same row, when
    // the editor has saved.
    void GradientIndexChanged(int row);
    void StyleChanged(bool pingPong);
    void TypeChanged(int index);
    void RepeatCountChanged(int count);
    void BlendModeChanged(int index);
    void OutsideChanged(bool outside);
    void OpacityChanged(int percent);
    void ReverseChanged(bool reverse);
    // The list of gradients was edited, and is to be stored.
    void SaveGradients();
    void Commit();
    void Cancel();

public:
    bool eventFilter(QObject* object, QEvent* event) override;

private Q_SLOTS:
    void OnReverse(bool reverse);
    void OnGradientToggled(bool checked);
    void OnTypeChanged(int index);
    void OnGradientIndex(int row);

private:
    struct Data;

    void ConnectValues();
    void CreatePopup();
    void DrawPreview(QPixmap* picture, int row) const;

    Data* m_pData;
};
