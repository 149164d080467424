#pragma once

#include <QWidget>

#include "guicore_export.h"

class QBoxLayout;

// Base of dialogs and panels: a frame of its own around one widget that takes the form.
//
// A window title that the form sets on the content becomes that of this widget. A size that the form gives to
// the content is the size at which this widget opens if it is a window and nobody has resized it.
class GUICORE_EXPORT KXWidget : public QWidget
{
    Q_OBJECT

public:
    explicit KXWidget(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~KXWidget() override;

    // The widget in which the form is set up. Never null; belongs to this widget.
    QWidget* Content() const;

    // Subclasses hand on to this what they don't swallow.
    bool eventFilter(QObject* object, QEvent* event) override;
    void setVisible(bool visible) override;

protected:
    // The layout that holds the content; a subclass may put something beside it.
    QBoxLayout* FrameLayout() const;

    // Press and release stop here, so that a click on a bare spot doesn't reach what lies behind.
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QWidget* m_pContent;
    QBoxLayout* m_pLayout;
};
