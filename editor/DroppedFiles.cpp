#include "DroppedFiles.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

QStringList DroppedPaths(const QDropEvent& event)
{
    QStringList paths;
    const QList<QUrl> urls = event.mimeData()->urls();
    for (const QUrl& url : urls)
    {
        if (url.isLocalFile())
            paths += url.toLocalFile();
    }
    return paths;
}

void AcceptAsCopy(QDropEvent* event)
{
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(event->possibleActions().testFlag(Qt::CopyAction));
}
