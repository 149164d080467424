#include "TourReport.h"

#include <QApplication>
#include <QDockWidget>
#include <QFile>
#include <QPainter>
#include <QTextStream>
#include <QWidget>

#include <algorithm>
#include <cstdio>

namespace
{

// Below what a bar needs.
const int Air = 8;

// A bar is as wide as the window, whatever it needs; panels and dialogs are as large as they are to be.
bool IsStretched(const QWidget* widget)
{
    const QWidget* top = widget;
    while (!top->isWindow() && !qobject_cast<const QDockWidget*>(top))
        top = top->parentWidget();
    return top != widget && top->isWindow();
}

QList<QWidget*> WindowsOver(const QWidget* window)
{
    QList<QWidget*> windows;
    const QWidgetList all = QApplication::topLevelWidgets();
    for (QWidget* top : all)
    {
        if (top != window && top->isVisible())
            windows += top;
    }
    // Tools lie under dialogs, and menus over all.
    std::stable_sort(windows.begin(), windows.end(),
                     [](const QWidget* one, const QWidget* other)
                     {
                         const auto rank = [](const QWidget* top)
                         { return top->windowType() == Qt::Popup ? 2 : (top->isModal() ? 1 : 0); };
                         return rank(one) < rank(other);
                     });
    return windows;
}

QImage Compose(QWidget* window)
{
    const QList<QWidget*> over = WindowsOver(window);
    QRect extent(window->mapToGlobal(QPoint()), window->size());
    for (const QWidget* top : over)
        extent |= QRect(top->mapToGlobal(QPoint()), top->size()).adjusted(-1, -1, 1, 1);
    const double ratio = window->devicePixelRatioF();
    QImage image(extent.size() * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::darkGray);
    QPainter painter(&image);
    painter.translate(-extent.topLeft());
    painter.drawPixmap(window->mapToGlobal(QPoint()), window->grab());
    for (QWidget* top : over)
    {
        const QRect place(top->mapToGlobal(QPoint()), top->size());
        painter.drawPixmap(place.topLeft(), top->grab());
        painter.setPen(Qt::black);
        painter.drawRect(place.adjusted(-1, -1, 0, 0));
    }
    return image;
}

} // namespace

TourReport::TourReport(const QString& folder)
    : m_folder(folder), m_isReady(m_folder.mkpath(QStringLiteral(".")))
{
}

bool TourReport::IsReady() const
{
    return m_isReady;
}

void TourReport::Begin(const QString& name, const QString& caption)
{
    m_steps += Step{name, caption, {}, {}, {}};
    m_isOpen = true;
}

void TourReport::Fail(const QString& reason)
{
    m_steps.last().failures += reason;
    if (!m_isOpen)
        QTextStream(stdout) << "FAIL  after " << m_steps.constLast().name << ": " << reason << "\n";
}

bool TourReport::HasFailed() const
{
    return !m_steps.isEmpty() && !m_steps.constLast().failures.isEmpty();
}

void TourReport::Note(const QString& text)
{
    m_steps.last().notes += text;
}

void TourReport::TakePicture(QWidget* window)
{
    const QString name =
        QStringLiteral("%1-%2.png").arg(++m_pictures, 2, 10, QLatin1Char('0')).arg(m_steps.constLast().name);
    Save(Compose(window), name);
}

void TourReport::TakePictureOf(QWidget* widget, const QString& name)
{
    const QSize size =
        IsStretched(widget) ? widget->size().boundedTo(widget->sizeHint() + QSize(0, Air)) : widget->size();
    Save(widget->grab(QRect(QPoint(), size)).toImage(), name + QStringLiteral(".png"));
}

void TourReport::End()
{
    m_isOpen = false;
    const Step& step = m_steps.constLast();
    QTextStream out(stdout);
    out << (step.failures.isEmpty() ? "ok    " : "FAIL  ")
        << QStringLiteral("%1 %2: %3")
               .arg(m_steps.size(), 2, 10, QLatin1Char('0'))
               .arg(step.name, step.caption);
    for (const QString& note : step.notes)
        out << "  [" << note << "]";
    for (const QString& failure : step.failures)
        out << "\n      " << failure;
    out << "\n";
}

bool TourReport::Close()
{
    QFile page(m_folder.filePath(QStringLiteral("index.html")));
    const QByteArray text = PageText().toUtf8();
    const bool written = page.open(QIODevice::WriteOnly) && page.write(text) == text.size();
    const auto failed = [](const Step& step) { return !step.failures.isEmpty(); };
    const int failures = int(std::count_if(m_steps.cbegin(), m_steps.cend(), failed));
    QTextStream(stdout) << m_steps.size() << " steps, " << failures << " failed; pictures in "
                        << m_folder.absolutePath() << "\n";
    return written && failures == 0;
}

void TourReport::Save(const QImage& image, const QString& name)
{
    if (image.save(m_folder.filePath(name)))
        m_steps.last().pictures += name;
    else
        Fail(QStringLiteral("%1 could not be written").arg(m_folder.filePath(name)));
}

QString TourReport::PageText() const
{
    QString text =
        QStringLiteral("<!DOCTYPE html>\n<html lang=\"en\">\n<meta charset=\"utf-8\">\n"
                       "<title>A tour of Norvane</title>\n<style>body{font-family:sans-serif;"
                       "max-width:80rem;margin:auto;padding:1rem}img{max-width:100%;border:1px solid "
                       "#888}.fail{color:#b00000}</style>\n<h1>A tour of Norvane</h1>\n");
    for (int i = 0; i < m_steps.size(); ++i)
    {
        const Step& step = m_steps.at(i);
        text += QStringLiteral("<h2>%1. %2</h2>\n").arg(i + 1).arg(step.caption.toHtmlEscaped());
        for (const QString& note : step.notes)
            text += QStringLiteral("<p>%1</p>\n").arg(note.toHtmlEscaped());
        for (const QString& failure : step.failures)
            text += QStringLiteral("<p class=\"fail\">Failed: %1</p>\n").arg(failure.toHtmlEscaped());
        for (const QString& picture : step.pictures)
            text += QStringLiteral("<p><img src=\"%1\" alt=\"%2\"></p>\n")
                        .arg(picture, step.caption.toHtmlEscaped());
    }
    return text;
}
