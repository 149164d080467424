// The mark of a file as it was.

#include "NVFileBookmark.h"
#include "TestMain.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

class tst_NVFileBookmark : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void defaultMarksNothing();
    void emptyPathMarksNothing();
    void pathIsAbsolute();
    void fileThatStaysIsUnchanged();
    void fileThatGrowsIsChanged();
    void fileThatIsWrittenAnewIsChanged();
    void fileThatGoesIsChanged();
    void missingFileStaysUnchangedUntilItComes();
    void copiesAreEqual();
    void takesNoMoreRoomThanAPointer();

private:
    QString write(const QByteArray& text) const;
    QTemporaryDir m_folder;
};

QString tst_NVFileBookmark::write(const QByteArray& text) const
{
    QFile file(m_folder.filePath("a.png"));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        return QString();
    return file.fileName();
}

void tst_NVFileBookmark::init()
{
    QFile::remove(m_folder.filePath("a.png"));
}

void tst_NVFileBookmark::defaultMarksNothing()
{
    const NVFileBookmark bookmark;
    QVERIFY(bookmark.IsNull());
    QCOMPARE(bookmark.GetPath(), QString());
    QVERIFY(!bookmark.IsUnchanged());
    QVERIFY(bookmark == NVFileBookmark());
}

void tst_NVFileBookmark::emptyPathMarksNothing()
{
    QVERIFY(NVFileBookmark(QString()).IsNull());
}

void tst_NVFileBookmark::pathIsAbsolute()
{
    QCOMPARE(NVFileBookmark("some.png").GetPath(), QDir::current().absoluteFilePath("some.png"));
}

void tst_NVFileBookmark::fileThatStaysIsUnchanged()
{
    const NVFileBookmark bookmark(write("abc"));
    QVERIFY(!bookmark.IsNull());
    QCOMPARE(bookmark.GetPath(), m_folder.filePath("a.png"));
    QVERIFY(bookmark.IsUnchanged());
}

void tst_NVFileBookmark::fileThatGrowsIsChanged()
{
    const NVFileBookmark bookmark(write("abc"));
    QVERIFY(!write("abcd").isEmpty());
    QVERIFY(!bookmark.IsUnchanged());
    QVERIFY(bookmark != NVFileBookmark(bookmark.GetPath()));
}

void tst_NVFileBookmark::fileThatIsWrittenAnewIsChanged()
{
    const NVFileBookmark bookmark(write("abc"));
    QFile file(bookmark.GetPath());
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::currentDateTime().addDays(-1), QFileDevice::FileModificationTime));
    file.close();
    QVERIFY(!bookmark.IsUnchanged());
}

void tst_NVFileBookmark::fileThatGoesIsChanged()
{
    const NVFileBookmark bookmark(write("abc"));
    QVERIFY(QFile::remove(bookmark.GetPath()));
    QVERIFY(!bookmark.IsUnchanged());
}

void tst_NVFileBookmark::missingFileStaysUnchangedUntilItComes()
{
    const NVFileBookmark bookmark(m_folder.filePath("a.png"));
    QVERIFY(!bookmark.IsNull());
    QVERIFY(bookmark.IsUnchanged());
    QVERIFY(!write("").isNull());
    QVERIFY(!bookmark.IsUnchanged());
}

void tst_NVFileBookmark::copiesAreEqual()
{
    const NVFileBookmark bookmark(write("abc"));
    NVFileBookmark copy(bookmark);
    QVERIFY(copy == bookmark);
    QVERIFY(NVFileBookmark(bookmark.GetPath()) == bookmark);
    copy = NVFileBookmark();
    QVERIFY(copy != bookmark);
    QVERIFY(bookmark != copy);
    QVERIFY(copy.IsNull());
    QVERIFY(!bookmark.IsNull());
}

void tst_NVFileBookmark::takesNoMoreRoomThanAPointer()
{
    QCOMPARE(sizeof(NVFileBookmark), sizeof(void*));
}

NV_TEST_MAIN(tst_NVFileBookmark)

#include "tst_NVFileBookmark.moc"
