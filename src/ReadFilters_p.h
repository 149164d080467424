#pragma once

#include <QStringList>

class NVImageFileManager;

// "*.ext" for each format that is read, but for the native document format, which is no input of a batch.
QStringList ReadFilters(const NVImageFileManager& manager);
