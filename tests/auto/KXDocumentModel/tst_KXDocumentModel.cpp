// What a view shows: a document and the transform to show it with.

#include "KXColorTransformBase.h"
#include "KXDocumentInterface.h"
#include "KXDocumentModel.h"
#include "TestMain.h"

#include <QPointer>

#include <memory>

namespace
{
class Blackening : public KXColorTransformBase
{
public:
    void Apply(QImage& image) const override { image.fill(Qt::black); }
};

class BlackModel : public KXDocumentModel
{
public:
    using KXDocumentModel::KXDocumentModel;
    KXColorTransformBase* CreateComplexFilter() const override { return new Blackening; }
};

QImage whitePixel()
{
    QImage image(1, 1, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    return image;
}
} // namespace

class tst_KXDocumentModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void modelGivesItsDocument();
    void modelWithoutDocumentGivesNull();
    void modelDoesNotOwnTheDocument();
    void plainFilterChangesNothing();
    void eachFilterIsANewOne();
    void filterOutlivesTheModel();
    void derivedModelBringsItsOwnFilter();
};

void tst_KXDocumentModel::modelGivesItsDocument()
{
    KXDocumentInterface document(whitePixel());

    QCOMPARE(KXDocumentModel(&document).GetDocument(), &document);
}

void tst_KXDocumentModel::modelWithoutDocumentGivesNull()
{
    QVERIFY(KXDocumentModel(nullptr).GetDocument() == nullptr);
}

void tst_KXDocumentModel::modelDoesNotOwnTheDocument()
{
    const auto document = std::make_unique<KXDocumentInterface>(whitePixel());
    const QPointer<KXDocumentInterface> watched(document.get());
    {
        KXDocumentModel model(document.get());
    }

    QVERIFY(!watched.isNull());
}

void tst_KXDocumentModel::plainFilterChangesNothing()
{
    const std::unique_ptr<KXColorTransformBase> filter(KXDocumentModel(nullptr).CreateComplexFilter());
    QImage image = whitePixel();

    filter->Apply(image);

    QCOMPARE(image, whitePixel());
}

void tst_KXDocumentModel::eachFilterIsANewOne()
{
    const KXDocumentModel model(nullptr);
    const std::unique_ptr<KXColorTransformBase> first(model.CreateComplexFilter());
    const std::unique_ptr<KXColorTransformBase> second(model.CreateComplexFilter());

    QVERIFY(first != second);
}

void tst_KXDocumentModel::filterOutlivesTheModel()
{
    auto model = std::make_unique<BlackModel>(nullptr);
    const std::unique_ptr<KXColorTransformBase> filter(model->CreateComplexFilter());
    QImage image = whitePixel();

    model.reset();
    filter->Apply(image);

    QCOMPARE(image.pixelColor(0, 0), QColor(Qt::black));
}

void tst_KXDocumentModel::derivedModelBringsItsOwnFilter()
{
    const std::unique_ptr<KXDocumentModel> model = std::make_unique<BlackModel>(nullptr);
    const std::unique_ptr<KXColorTransformBase> filter(model->CreateComplexFilter());
    QImage image = whitePixel();

    filter->Apply(image);

    QCOMPARE(image.pixelColor(0, 0), QColor(Qt::black));
}

NV_TEST_MAIN(tst_KXDocumentModel)

#include "tst_KXDocumentModel.moc"
