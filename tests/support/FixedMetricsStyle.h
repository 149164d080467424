// A style whose measures do not depend on the machine, for checks of sizes and places.

#pragma once

#include <QFont>
#include <QProxyStyle>

// Fusion with fixed pixel metrics, fixed size hints of the common controls' frames and a font of fixed pixel
// size.
//
//     FixedMetricsStyle::Scope fixed;       // the whole application, until the end of the scope
class FixedMetricsStyle : public QProxyStyle
{
    Q_OBJECT
public:
    FixedMetricsStyle();

    // 12 pixels high, unhinted, of the first of a few widespread families that is there.
    static QFont Font();

    int pixelMetric(PixelMetric metric, const QStyleOption* option = nullptr,
                    const QWidget* widget = nullptr) const override;
    int styleHint(StyleHint hint, const QStyleOption* option = nullptr, const QWidget* widget = nullptr,
                  QStyleHintReturn* returnData = nullptr) const override;
    int layoutSpacing(QSizePolicy::ControlType one, QSizePolicy::ControlType other,
                      Qt::Orientation orientation, const QStyleOption* option = nullptr,
                      const QWidget* widget = nullptr) const override;

    // Puts style and font into force for the application and restores what was before.
    class Scope
    {
    public:
        Scope();
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        QString m_styleBefore;
        QFont m_fontBefore;
    };
};
