// The gradient tool at work on a canvas. For tests that link the editor.

#pragma once

#include <QToolButton>

#include "GradientTool.h"
#include "NVGradientToolbar.h"
#include "ToolHost.h"

// From black to white; and plain red.
inline QList<QList<NVGradientStop>> BlackToWhite()
{
    return {
        {NVGradientStop(0, Qt::black, false, false, false),
         NVGradientStop(1, Qt::white, false, false, false)},
        {NVGradientStop(0, Qt::red, false, false, false), NVGradientStop(1, Qt::red, false, false, false)}};
}

struct GradientHost : ToolHost<GradientTool>
{
    explicit GradientHost(QSettings* settings, const QImage& picture = PlainPicture(Qt::blue))
        : ToolHost(settings, picture)
    {
        bar()->Load(BlackToWhite());
    }

    NVGradientToolbar* bar() const { return tool->GetGradientBar(); }
    QToolButton* button(const char* name) const { return bar()->findChild<QToolButton*>(name); }
    void pull(const QPointF& from, const QPointF& to)
    {
        press(from.x(), from.y());
        move((from.x() + to.x()) / 2, (from.y() + to.y()) / 2);
        move(to.x(), to.y());
        release(to.x(), to.y());
    }
    // From 50 to 250 along the middle.
    void pull() { pull(QPointF(50, 100), QPointF(250, 100)); }
    // What the canvas shows at a place of the document.
    QColor shown(double x, double y) const
    {
        const QImage image = view->viewport()->grab().toImage();
        return image.pixelColor(at(x, y) * image.devicePixelRatio());
    }
    bool isClean() const
    {
        return !tool->IsPending() && !tool->IsRendering() && !pixels()->IsBeingEdited() &&
            button("m_pCommit")->isHidden() && button("m_pCancel")->isHidden();
    }
};
