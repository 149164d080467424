#pragma once

#include <QByteArray>
#include <QCoreApplication>

#include "GradientFile.h"

// The contents of gradient files.
class GradientText
{
    Q_DECLARE_TR_FUNCTIONS(GradientText)

public:
    // What one gradient may have, and one file.
    static const int MaxStops = 10000;
    static const int MaxGradients = 10000;

    // Whatever kind it is. The name is for gradients that have none of their own. When there is none to be
    // had, the reason says why.
    static QVector<NamedGradient> Parse(const QByteArray& text, const QString& name, QString* reason);

    static QByteArray ToGgr(const NamedGradient& gradient);
    static QByteArray ToSvg(const QVector<NamedGradient>& gradients);

private:
    static QVector<NamedGradient> ParseGgr(const QByteArray& text, const QString& name, QString* reason);
    static QVector<NamedGradient> ParseSvg(const QByteArray& text, const QString& name, QString* reason);
};

// One line that can stand in any file: no control characters, no overlong text.
QString CleanName(const QString& name);
