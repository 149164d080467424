#pragma once

#include <QString>

class QCommandLineParser;

// What a person asks the gallery for.
struct GalleryRequest
{
    // In words for that person, empty if the rest can be done.
    QString error;
    // Where the pictures of all widgets go. Empty for none.
    QString folder;
    // The widget to begin with. Empty for the first one.
    QString name;
    // A KXResource::Theme.
    int theme = 0;
    // Device pixels for one of the program's, 1 to 4.
    int scale = 1;
    bool list = false;
};

// Options and arguments of the program; help and version are the caller's.
void AddGalleryOptions(QCommandLineParser& parser);
// Of a parser that has parsed.
GalleryRequest ReadGalleryRequest(const QCommandLineParser& parser);
