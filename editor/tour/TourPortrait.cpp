// The face of TourPictures.h.

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QRandomGenerator>

#include "PictureParts.h"
#include "TourPictures.h"

namespace
{

const QPointF Eyes[] = {QPointF(510, 372), QPointF(690, 372)};
const QPointF Face(600, 410);
const double IrisRadius = 25;
const double PupilRadius = 15;
const QPointF Highlight(-5, -6);

QRadialGradient Glow(const QPointF& middle, double radius, const QColor& inside, const QColor& outside)
{
    QRadialGradient glow(middle, radius);
    glow.setColorAt(0.0, inside);
    glow.setColorAt(1.0, outside);
    return glow;
}

// A room in the evening, its lamps out of focus.
void DrawRoom(QPainter& painter, const QSize& size)
{
    painter.fillRect(QRect(QPoint(), size),
                     Glow(QPointF(600, 330), 760, QColor(82, 68, 94), QColor(20, 17, 30)));
    QRandomGenerator random(31);
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < 46; ++i)
    {
        const double radius = 12 + 40 * random.generateDouble();
        const QPointF middle(random.bounded(size.width()), random.bounded(size.height()));
        painter.setBrush(
            QColor::fromHsv(20 + int(random.bounded(38)), 150, 255, 12 + int(random.bounded(26))));
        painter.drawEllipse(middle, radius, radius);
    }
}

void DrawBackHair(QPainter& painter)
{
    QPainterPath hair(QPointF(600, 96));
    hair.cubicTo(400, 90, 330, 260, 352, 430);
    hair.cubicTo(362, 560, 340, 640, 318, 720);
    hair.cubicTo(420, 760, 780, 760, 882, 720);
    hair.cubicTo(860, 640, 838, 560, 848, 430);
    hair.cubicTo(870, 260, 800, 90, 600, 96);
    painter.fillPath(hair, Glow(QPointF(560, 200), 560, QColor(110, 66, 38), QColor(40, 22, 14)));
}

void DrawShoulders(QPainter& painter)
{
    QPainterPath neck(QPointF(530, 560));
    neck.cubicTo(532, 660, 520, 690, 440, 700);
    neck.cubicTo(500, 770, 700, 770, 760, 700);
    neck.cubicTo(680, 690, 668, 660, 670, 560);
    QLinearGradient shade(0, 580, 0, 700);
    shade.setColorAt(0.0, QColor(176, 118, 92));
    shade.setColorAt(1.0, QColor(226, 170, 138));
    painter.fillPath(neck, shade);

    QPainterPath shirt(QPointF(190, 800));
    shirt.cubicTo(214, 724, 330, 706, 452, 690);
    shirt.cubicTo(500, 750, 700, 750, 748, 690);
    shirt.cubicTo(870, 706, 986, 724, 1010, 800);
    shirt.closeSubpath();
    QLinearGradient cloth(0, 680, 0, 800);
    cloth.setColorAt(0.0, QColor(58, 118, 136));
    cloth.setColorAt(1.0, QColor(30, 74, 92));
    painter.fillPath(shirt, cloth);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(110, 168, 182), 5));
    QPainterPath collar(QPointF(452, 690));
    collar.cubicTo(500, 750, 700, 750, 748, 690);
    painter.drawPath(collar);
    painter.setPen(Qt::NoPen);
}

void DrawHead(QPainter& painter)
{
    const QColor skin(240, 190, 158);
    for (double side : {-1.0, 1.0})
    {
        const QPointF ear = Face + QPointF(side * 206, 10);
        painter.setBrush(Glow(ear, 60, QColor(222, 150, 122), QColor(206, 140, 112)));
        painter.drawEllipse(ear, 30, 52);
    }
    QPainterPath head(QPointF(600, 156));
    head.cubicTo(740, 156, 812, 260, 806, 400);
    head.cubicTo(800, 540, 700, 644, 600, 646);
    head.cubicTo(500, 644, 400, 540, 394, 400);
    head.cubicTo(388, 260, 460, 156, 600, 156);
    QRadialGradient light(QPointF(590, 350), 330);
    light.setColorAt(0.0, QColor(255, 220, 190));
    light.setColorAt(0.55, skin);
    light.setColorAt(1.0, QColor(196, 134, 104));
    painter.fillPath(head, light);
    for (double side : {-1.0, 1.0})
    {
        const QPointF cheek = Face + QPointF(side * 112, 84);
        painter.setBrush(Glow(cheek, 66, QColor(232, 120, 104, 96), QColor(232, 120, 104, 0)));
        painter.drawEllipse(cheek, 66, 66);
    }
}

void DrawNoseAndMouth(QPainter& painter)
{
    painter.setBrush(Glow(QPointF(600, 474), 46, QColor(255, 232, 208, 170), QColor(255, 220, 190, 0)));
    painter.drawEllipse(QPointF(600, 462), 26, 40);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(176, 108, 84), 4, Qt::SolidLine, Qt::RoundCap));
    QPainterPath nose(QPointF(570, 486));
    nose.cubicTo(580, 502, 592, 494, 600, 500);
    nose.cubicTo(608, 494, 620, 502, 630, 486);
    painter.drawPath(nose);

    QPainterPath upper(QPointF(528, 548));
    upper.cubicTo(562, 540, 584, 540, 600, 548);
    upper.cubicTo(616, 540, 638, 540, 672, 548);
    upper.cubicTo(632, 572, 568, 572, 528, 548);
    QPainterPath lower(QPointF(528, 548));
    lower.cubicTo(562, 602, 638, 602, 672, 548);
    lower.cubicTo(632, 572, 568, 572, 528, 548);
    painter.setPen(Qt::NoPen);
    painter.fillPath(upper, QColor(178, 82, 78));
    painter.fillPath(lower, QColor(202, 104, 96));
    painter.setPen(QPen(QColor(120, 50, 48), 2.5, Qt::SolidLine, Qt::RoundCap));
    QPainterPath line(QPointF(522, 544));
    line.cubicTo(566, 573, 634, 573, 678, 544);
    painter.drawPath(line);
    painter.setPen(Qt::NoPen);
}

QPainterPath EyeOpening(const QPointF& eye)
{
    QPainterPath path(eye + QPointF(-58, 5));
    path.cubicTo(eye + QPointF(-34, -38), eye + QPointF(32, -38), eye + QPointF(58, 3));
    path.cubicTo(eye + QPointF(30, 30), eye + QPointF(-32, 32), eye + QPointF(-58, 5));
    return path;
}

void DrawPupil(QPainter& painter, const QPointF& eye)
{
    QRadialGradient red(eye + QPointF(0, 2), PupilRadius);
    red.setColorAt(0.0, QColor(255, 62, 48));
    red.setColorAt(0.7, QColor(222, 24, 24));
    red.setColorAt(1.0, QColor(150, 10, 16));
    painter.setBrush(red);
    painter.drawEllipse(eye, PupilRadius, PupilRadius);
    painter.setBrush(Qt::white);
    painter.drawEllipse(eye + Highlight, 4.5, 4.5);
}

void DrawEye(QPainter& painter, const QPointF& eye)
{
    const QPainterPath opening = EyeOpening(eye);
    painter.save();
    painter.setClipPath(opening);
    QLinearGradient white(eye - QPointF(0, 28), eye + QPointF(0, 24));
    white.setColorAt(0.0, QColor(196, 182, 178));
    white.setColorAt(0.4, QColor(250, 246, 242));
    white.setColorAt(1.0, QColor(232, 222, 218));
    painter.fillPath(opening, white);
    QRadialGradient iris(eye, IrisRadius);
    iris.setColorAt(0.5, QColor(126, 92, 52));
    iris.setColorAt(0.85, QColor(92, 62, 34));
    iris.setColorAt(1.0, QColor(46, 30, 18));
    painter.setBrush(iris);
    painter.drawEllipse(eye, IrisRadius, IrisRadius);
    DrawPupil(painter, eye);
    painter.restore();

    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(60, 34, 24), 6, Qt::SolidLine, Qt::RoundCap));
    QPainterPath lid(eye + QPointF(-60, 6));
    lid.cubicTo(eye + QPointF(-34, -40), eye + QPointF(32, -40), eye + QPointF(60, 3));
    painter.drawPath(lid);
    painter.setPen(QPen(QColor(186, 124, 98), 2.5, Qt::SolidLine, Qt::RoundCap));
    painter.drawPath(lid.translated(0, -14));
    painter.setPen(Qt::NoPen);
}

void DrawBrow(QPainter& painter, const QPointF& eye, double side)
{
    QPainterPath brow(eye + QPointF(-side * 54, -60));
    brow.cubicTo(eye + QPointF(-side * 10, -82), eye + QPointF(side * 40, -78),
                 eye + QPointF(side * 70, -44));
    brow.cubicTo(eye + QPointF(side * 36, -66), eye + QPointF(-side * 10, -68),
                 eye + QPointF(-side * 52, -50));
    brow.closeSubpath();
    painter.fillPath(brow, QColor(74, 44, 28));
}

void DrawFringe(QPainter& painter)
{
    QPainterPath fringe(QPointF(388, 420));
    fringe.cubicTo(360, 220, 450, 108, 604, 110);
    fringe.cubicTo(760, 112, 838, 220, 812, 420);
    fringe.cubicTo(806, 330, 770, 260, 690, 214);
    fringe.cubicTo(600, 290, 470, 250, 430, 300);
    fringe.cubicTo(404, 330, 396, 370, 388, 420);
    painter.fillPath(fringe, Glow(QPointF(560, 150), 330, QColor(142, 90, 54), QColor(58, 32, 20)));
}

} // namespace

PortraitPicture DrawPortrait()
{
    PortraitPicture portrait;
    portrait.image = QImage(1200, 800, QImage::Format_RGB32);
    portrait.pupils = {Eyes[0], Eyes[1]};
    portrait.pupilRadius = PupilRadius;
    portrait.highlight = Highlight;
    portrait.cheek = Face + QPointF(-112, 84);
    QPainter painter(&portrait.image);
    painter.setRenderHint(QPainter::Antialiasing);
    DrawRoom(painter, portrait.image.size());
    DrawBackHair(painter);
    DrawShoulders(painter);
    DrawHead(painter);
    DrawNoseAndMouth(painter);
    DrawEye(painter, Eyes[0]);
    DrawEye(painter, Eyes[1]);
    DrawBrow(painter, Eyes[0], -1);
    DrawBrow(painter, Eyes[1], 1);
    DrawFringe(painter);
    painter.end();
    AddGrain(portrait.image, 3, 9);
    return portrait;
}
