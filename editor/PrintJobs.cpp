#include "PrintJobs.h"

#include <QDataStream>
#include <QUrl>

#include <algorithm>

#include "PrintServer.h"

// Questions and answers of the Internet Printing Protocol: groups of attributes, each of them a type, a name
// and a value, with lengths in front. An attribute without a name is one more value of the one before.

namespace
{

const quint16 Version = 0x0101;
const quint16 GetJobs = 0x000a;
const quint32 RequestId = 1;
// Above it an answer tells why there is none.
const quint16 LastSuccess = 0x00ff;

enum GroupTag : quint8
{
    OperationGroup = 0x01,
    JobGroup = 0x02,
    EndTag = 0x03,
    LastGroupTag = 0x0f
};

enum ValueTag : quint8
{
    IntegerTag = 0x21,
    EnumTag = 0x23,
    KeywordTag = 0x44,
    UriTag = 0x45,
    CharsetTag = 0x47,
    LanguageTag = 0x48
};

void AddText(QDataStream& stream, const QByteArray& text)
{
    stream << quint16(text.size());
    stream.writeRawData(text.constData(), text.size());
}

void AddAttribute(QDataStream& stream, ValueTag tag, const QByteArray& name, const QByteArray& value)
{
    stream << quint8(tag);
    AddText(stream, name);
    AddText(stream, value);
}

QByteArray ReadText(QDataStream& stream)
{
    quint16 length = 0;
    stream >> length;
    QByteArray text(length, '\0');
    if (stream.readRawData(text.data(), length) == length)
        return text;
    stream.setStatus(QDataStream::ReadPastEnd);
    return QByteArray();
}

// Big-endian, as all numbers.
int ToNumber(const QByteArray& value)
{
    QDataStream stream(value);
    qint32 number = 0;
    stream >> number;
    return number;
}

// The name of the queue is the last part of its address.
QString QueueOf(const QByteArray& uri)
{
    const QString path = QUrl::fromEncoded(uri).path(QUrl::FullyDecoded);
    return path.section(QLatin1Char('/'), -1);
}

void TakeAttribute(QueuedJob& job, const QByteArray& name, const QByteArray& value)
{
    if (name == "job-id")
        job.id = ToNumber(value);
    else if (name == "job-state")
        job.state = ToNumber(value);
    else if (name == "job-printer-uri")
        job.printer = QueueOf(value);
}

} // namespace

int QueuedJobs::LastId() const
{
    int last = 0;
    for (const QueuedJob& job : jobs)
        last = qMax(last, job.id);
    return last;
}

QueuedJob QueuedJobs::FirstAfter(int id, const QString& printer) const
{
    QueuedJob first;
    for (const QueuedJob& job : jobs)
    {
        if (job.id > id && job.printer == printer && (first.id == 0 || job.id < first.id))
            first = job;
    }
    return first;
}

QByteArray JobsQuestion()
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << Version << GetJobs << RequestId << quint8(OperationGroup);
    AddAttribute(stream, CharsetTag, "attributes-charset", "utf-8");
    AddAttribute(stream, LanguageTag, "attributes-natural-language", "en");
    // The root stands for all queues.
    AddAttribute(stream, UriTag, "printer-uri", "ipp://localhost/");
    AddAttribute(stream, KeywordTag, "which-jobs", "all");
    AddAttribute(stream, KeywordTag, "requested-attributes", "job-id");
    for (const char* more : {"job-state", "job-printer-uri"})
        AddAttribute(stream, KeywordTag, QByteArray(), more);
    stream << quint8(EndTag);
    return bytes;
}

QueuedJobs ReadJobsAnswer(const QByteArray& bytes)
{
    QDataStream stream(bytes);
    quint16 version = 0;
    quint16 status = 0;
    quint32 request = 0;
    stream >> version >> status >> request;
    if (stream.status() != QDataStream::Ok || status > LastSuccess)
        return QueuedJobs();
    QueuedJobs answer;
    quint8 group = 0;
    while (stream.status() == QDataStream::Ok)
    {
        quint8 tag = 0;
        stream >> tag;
        if (tag == EndTag)
        {
            answer.isKnown = stream.status() == QDataStream::Ok;
            break;
        }
        if (tag <= LastGroupTag)
        {
            group = tag;
            if (group == JobGroup)
                answer.jobs += QueuedJob();
            continue;
        }
        const QByteArray name = ReadText(stream);
        const QByteArray value = ReadText(stream);
        if (group == JobGroup)
            TakeAttribute(answer.jobs.last(), name, value);
    }
    return answer.isKnown ? answer : QueuedJobs();
}

QueuedJobs AskForJobs(const QString& address, int milliseconds)
{
    return ReadJobsAnswer(PostToPrintServer(address, JobsQuestion(), milliseconds));
}
