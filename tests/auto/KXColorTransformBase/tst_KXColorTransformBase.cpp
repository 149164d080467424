// The colour transform between document and screen.

#include "KXColorTransformBase.h"
#include "TestMain.h"

#include <QtConcurrent>

#include <memory>

namespace
{
class Inverse : public KXColorTransformBase
{
public:
    explicit Inverse(bool* deleted = nullptr) : m_deleted(deleted) { }
    ~Inverse() override
    {
        if (m_deleted)
            *m_deleted = true;
    }
    void Apply(QImage& image) const override { image.invertPixels(); }

private:
    bool* m_deleted;
};

QImage sample()
{
    QImage image(3, 2, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(10, 20, 30, 40));
    return image;
}
} // namespace

class tst_KXColorTransformBase : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void plainTransformLeavesPixelsAlone();
    void plainTransformDoesNotCopyTheImage();
    void nullImageIsAccepted();
    void derivedTransformActsThroughTheBase();
    void derivedTransformIsDeletedThroughTheBase();
    void otherThreadMayApply();
};

void tst_KXColorTransformBase::plainTransformLeavesPixelsAlone()
{
    QImage image = sample();

    KXColorTransformBase().Apply(image);

    QCOMPARE(image, sample());
    QCOMPARE(image.format(), QImage::Format_ARGB32_Premultiplied);
}

void tst_KXColorTransformBase::plainTransformDoesNotCopyTheImage()
{
    QImage image = sample();
    const QImage shared = image;

    KXColorTransformBase().Apply(image);

    QCOMPARE(image.constBits(), shared.constBits());
}

void tst_KXColorTransformBase::nullImageIsAccepted()
{
    QImage image;

    KXColorTransformBase().Apply(image);

    QVERIFY(image.isNull());
}

void tst_KXColorTransformBase::derivedTransformActsThroughTheBase()
{
    const std::unique_ptr<KXColorTransformBase> transform = std::make_unique<Inverse>();
    QImage image(1, 1, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);

    transform->Apply(image);

    QCOMPARE(image.pixelColor(0, 0), QColor(Qt::white));
}

void tst_KXColorTransformBase::derivedTransformIsDeletedThroughTheBase()
{
    bool deleted = false;
    KXColorTransformBase* transform = new Inverse(&deleted);

    delete transform;

    QVERIFY(deleted);
}

void tst_KXColorTransformBase::otherThreadMayApply()
{
    const Inverse transform;
    QImage image(1, 1, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);

    QtConcurrent::run([&] { transform.Apply(image); }).waitForFinished();

    QCOMPARE(image.pixelColor(0, 0), QColor(Qt::white));
}

NV_TEST_MAIN(tst_KXColorTransformBase)

#include "tst_KXColorTransformBase.moc"
