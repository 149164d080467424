// The question for a print server's jobs to the byte, and answers of all kinds: whole, cut off, refused and
// hostile.

#include "PrintJobs.h"

#include <QDataStream>
#include <QRandomGenerator>

#include "TestMain.h"

namespace
{

enum Tag : quint8
{
    Operation = 0x01,
    Job = 0x02,
    End = 0x03,
    Integer = 0x21,
    Enum = 0x23,
    Keyword = 0x44,
    Uri = 0x45,
    Charset = 0x47
};

// The bytes of an answer, written group by group.
class Answer
{
public:
    explicit Answer(quint16 status = 0) : m_stream(&m_bytes, QIODevice::WriteOnly)
    {
        m_stream << quint16(0x0101) << status << quint32(1) << quint8(Operation);
        Add(Charset, "attributes-charset", "utf-8");
    }
    Answer& Add(Tag tag, const QByteArray& name, const QByteArray& value)
    {
        m_stream << quint8(tag);
        for (const QByteArray& part : {name, value})
        {
            m_stream << quint16(part.size());
            m_stream.writeRawData(part.constData(), part.size());
        }
        return *this;
    }
    Answer& Add(Tag tag, const QByteArray& name, qint32 number)
    {
        QByteArray value;
        QDataStream(&value, QIODevice::WriteOnly) << number;
        return Add(tag, name, value);
    }
    Answer& AddJob(int id, int state, const QByteArray& printer)
    {
        m_stream << quint8(Job);
        Add(Integer, "job-id", id).Add(Enum, "job-state", state);
        return Add(Uri, "job-printer-uri", "ipp://localhost/printers/" + printer);
    }
    QByteArray Ended()
    {
        m_stream << quint8(End);
        return m_bytes;
    }

private:
    QByteArray m_bytes;
    QDataStream m_stream;
};

// "12 Colour 9", one a job.
QStringList Texts(const QueuedJobs& jobs)
{
    QStringList texts;
    for (const QueuedJob& job : jobs.jobs)
        texts += QString("%1 %2 %3").arg(job.id).arg(job.printer).arg(job.state);
    return texts;
}

QByteArray Attribute(const char* tag, const QByteArray& name, const QByteArray& value)
{
    const auto length = [](const QByteArray& text)
    { return QByteArray::number(text.size(), 16).rightJustified(4, '0'); };
    return tag + length(name) + name.toHex() + length(value) + value.toHex();
}

} // namespace

class tst_PrintJobs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theQuestionIsThisToTheByte()
    {
        const QByteArray expected = "0101000a00000001"
                                    "01" +
            Attribute("47", "attributes-charset", "utf-8") +
            Attribute("48", "attributes-natural-language", "en") +
            Attribute("45", "printer-uri", "ipp://localhost/") + Attribute("44", "which-jobs", "all") +
            Attribute("44", "requested-attributes", "job-id") + Attribute("44", "", "job-state") +
            Attribute("44", "", "job-printer-uri") + "03";

        QCOMPARE(JobsQuestion().toHex(), expected);
    }

    void jobsAreReadFromAnAnswer()
    {
        Answer answer;
        answer.AddJob(7, 9, "Colour").AddJob(9, 3, "Grey").AddJob(8, 8, "Raw");

        const QueuedJobs jobs = ReadJobsAnswer(answer.Ended());

        QVERIFY(jobs.isKnown);
        QCOMPARE(Texts(jobs), QStringList({"7 Colour 9", "9 Grey 3", "8 Raw 8"}));
        QCOMPARE(jobs.LastId(), 9);
    }

    void withoutJobsAnAnswerIsOneToo()
    {
        const QueuedJobs jobs = ReadJobsAnswer(Answer().Ended());

        QVERIFY(jobs.isKnown);
        QVERIFY(jobs.jobs.isEmpty());
        QCOMPARE(jobs.LastId(), 0);
        QCOMPARE(jobs.FirstAfter(0, "Colour").id, 0);
    }

    void whatElseAJobHasIsPassedOver()
    {
        Answer answer;
        answer.AddJob(5, 5, "Colour");
        answer.Add(Keyword, "job-state-reasons", "job-printing").Add(Keyword, "", "more");
        answer.Add(Integer, "job-k-octets", 12);
        answer.AddJob(6, 9, "Grey");

        QCOMPARE(Texts(ReadJobsAnswer(answer.Ended())), QStringList({"5 Colour 5", "6 Grey 9"}));
    }

    void attributesOfOtherGroupsAreNoJobs()
    {
        Answer answer;
        answer.Add(Integer, "job-id", 3);

        const QueuedJobs jobs = ReadJobsAnswer(answer.Ended());

        QVERIFY(jobs.isKnown);
        QVERIFY(jobs.jobs.isEmpty());
    }

    void queuesHaveTheNameOfTheirAddress_data()
    {
        QTest::addColumn<QByteArray>("uri");
        QTest::addColumn<QString>("printer");
        QTest::newRow("printer") << QByteArray("ipp://localhost/printers/Colour") << "Colour";
        QTest::newRow("class") << QByteArray("ipp://localhost/classes/All") << "All";
        QTest::newRow("with a port") << QByteArray("ipp://host.example:631/printers/Colour") << "Colour";
        QTest::newRow("escaped") << QByteArray("ipp://localhost/printers/B%C3%BCro%231")
                                 << QString::fromUtf8("Büro#1");
        QTest::newRow("none") << QByteArray("") << "";
    }

    void queuesHaveTheNameOfTheirAddress()
    {
        QFETCH(QByteArray, uri);
        QFETCH(QString, printer);
        Answer answer;
        answer.AddJob(5, 5, "x").Add(Uri, "job-printer-uri", uri);

        QCOMPARE(ReadJobsAnswer(answer.Ended()).jobs.first().printer, printer);
    }

    void theFirstNewJobOfAQueueIsFound()
    {
        Answer answer;
        answer.AddJob(9, 3, "Grey").AddJob(13, 3, "Grey").AddJob(11, 5, "Grey").AddJob(12, 3, "Grey");
        answer.AddJob(10, 9, "Colour");
        const QueuedJobs jobs = ReadJobsAnswer(answer.Ended());

        QCOMPARE(jobs.FirstAfter(9, "Grey").id, 11);
        QCOMPARE(jobs.FirstAfter(9, "Grey").state, int(QueuedJob::Processing));
        QCOMPARE(jobs.FirstAfter(11, "Grey").id, 12);
        QCOMPARE(jobs.FirstAfter(13, "Grey").id, 0);
        QCOMPARE(jobs.FirstAfter(9, "Colour").id, 10);
        QCOMPARE(jobs.FirstAfter(9, "Raw").id, 0);
    }

    void statesAreOpenFailedOrDone()
    {
        for (int state = 3; state <= 9; ++state)
        {
            QueuedJob job;
            job.state = state;
            QCOMPARE(job.IsOpen(), state <= 6);
            QCOMPARE(job.IsFailed(), state == 7 || state == 8);
        }
    }

    void anAnswerThatIsARefusalTellsNothing_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<bool>("isKnown");
        QTest::newRow("successful") << 0x0000 << true;
        QTest::newRow("with a remark") << 0x0001 << true;
        QTest::newRow("the last success") << 0x00ff << true;
        QTest::newRow("not found") << 0x0406 << false;
        QTest::newRow("server error") << 0x0500 << false;
    }

    void anAnswerThatIsARefusalTellsNothing()
    {
        QFETCH(int, status);
        QFETCH(bool, isKnown);
        Answer answer((quint16(status)));
        answer.AddJob(7, 9, "Colour");

        const QueuedJobs jobs = ReadJobsAnswer(answer.Ended());

        QCOMPARE(jobs.isKnown, isKnown);
        QCOMPARE(jobs.jobs.isEmpty(), !isKnown);
    }

    void anAnswerThatIsCutOffTellsNothing()
    {
        Answer answer;
        answer.AddJob(7, 9, "Colour").AddJob(8, 3, "Grey");
        const QByteArray whole = answer.Ended();

        for (int length = 0; length < whole.size(); ++length)
        {
            const QueuedJobs jobs = ReadJobsAnswer(whole.left(length));
            QVERIFY2(!jobs.isKnown && jobs.jobs.isEmpty(), qPrintable(QString::number(length)));
        }
        QVERIFY(ReadJobsAnswer(whole).isKnown);
        // What follows the end is none of it.
        QCOMPARE(ReadJobsAnswer(whole + "more").jobs.size(), 2);
    }

    void numbersOfAnotherLengthAreHarmless()
    {
        Answer answer;
        answer.AddJob(7, 9, "Colour")
            .Add(Integer, "job-id", QByteArray("\1\2"))
            .Add(Enum, "job-state", QByteArray());

        QCOMPARE(Texts(ReadJobsAnswer(answer.Ended())), QStringList("0 Colour 0"));
    }

    void hostileBytesAreHarmless()
    {
        QRandomGenerator random(7);
        Answer answer;
        answer.AddJob(7, 9, "Colour").AddJob(8, 3, "Grey");
        const QByteArray whole = answer.Ended();

        for (int i = 0; i < 20000; ++i)
        {
            QByteArray bytes = whole;
            for (int changes = random.bounded(1, 6); changes > 0; --changes)
                bytes[random.bounded(bytes.size())] = char(random.bounded(256));
            const QueuedJobs jobs = ReadJobsAnswer(bytes);
            QVERIFY(jobs.isKnown || jobs.jobs.isEmpty());
            QVERIFY(jobs.jobs.size() <= bytes.size());
        }
    }

    void withoutAServerNoJobsAreKnown() { QVERIFY(!AskForJobs("/nonexistent/cups.sock").isKnown); }
};

NV_TEST_MAIN(tst_PrintJobs)
#include "tst_PrintJobs.moc"
