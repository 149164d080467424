#pragma once

#include <QStringList>

class QDropEvent;

// Files and folders of this machine that are dragged onto a window.
QStringList DroppedPaths(const QDropEvent& event);

// Takes what is dragged as a copy, and nothing if that is not offered: a program that believes to have moved
// its files deletes them.
void AcceptAsCopy(QDropEvent* event);
