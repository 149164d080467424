// How long the bar of the text tool takes to be made, and to be shown, with few and with many font families.

#include <QApplication>
#include <QFontDatabase>
#include <QTemporaryDir>
#include <QtEndian>

#include <benchmark/benchmark.h>

#include "NVTextToolbar.h"

namespace
{

template <class T>
void Append(QByteArray& bytes, T value)
{
    const T big = qToBigEndian(value);
    bytes.append(reinterpret_cast<const char*>(&big), int(sizeof big));
}

QByteArray Words(std::initializer_list<int> values)
{
    QByteArray bytes;
    for (const int value : values)
        Append(bytes, quint16(value));
    return bytes;
}

QByteArray HeadTable()
{
    QByteArray head = Words({1, 0, 1, 0, 0, 0, 0x5F0F, 0x3CF5, 0, 1000});
    head += QByteArray(16, 0);
    return head + Words({0, 0, 500, 700, 0, 8, 2, 0, 0});
}

QByteArray NameTable(const QString& family)
{
    QByteArray text;
    for (const QChar letter : family)
        Append(text, letter.unicode());
    return Words({0, 1, 18, 3, 1, 0x409, 1, text.size(), 0}) + text;
}

// All letters are one blank glyph.
QByteArray LetterTable()
{
    const int first = 32;
    const int count = 95;
    QByteArray table = Words({0, 1, 3, 1, 0, 12, 6, 10 + 2 * count, 0, first, count});
    for (int i = 0; i < count; ++i)
        Append(table, quint16(1));
    return table;
}

// A font of one glyph under this name.
QByteArray MakeFont(const QString& family)
{
    const QList<QPair<QByteArray, QByteArray>> tables = {
        {"cmap", LetterTable()},
        {"glyf", QByteArray(4, 0)},
        {"head", HeadTable()},
        {"hhea", Words({1, 0, 800, -200, 0, 500, 0, 0, 500, 1, 0, 0, 0, 0, 0, 0, 0, 2})},
        {"hmtx", Words({500, 0, 500, 0})},
        {"loca", Words({0, 0, 0})},
        {"maxp", Words({1, 0, 2, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0})},
        {"name", NameTable(family)},
    };
    QByteArray font = Words({1, 0, tables.size(), 128, 3, 0});
    QByteArray body;
    const int start = 12 + 16 * tables.size();
    for (const auto& table : tables)
    {
        font += table.first;
        Append(font, quint32(0));
        Append(font, quint32(start + body.size()));
        Append(font, quint32(table.second.size()));
        body += table.second;
        body += QByteArray((4 - body.size() % 4) % 4, 0);
    }
    return font + body;
}

// Families stay until the program ends: rows are to run with ever more of them.
bool HaveFamilies(int count)
{
    for (int i = QFontDatabase().families().size(); i < count; ++i)
        QFontDatabase::addApplicationFontFromData(MakeFont(QStringLiteral("Family %1").arg(i, 4)));
    return QFontDatabase().families().size() == count;
}

void Construct(benchmark::State& state)
{
    if (!HaveFamilies(int(state.range(0))))
        state.SkipWithError("the families cannot be made");
    for (auto _ : state)
        benchmark::DoNotOptimize(NVTextToolbar(nullptr).GetFontSize());
}
BENCHMARK(Construct)->Arg(50)->Arg(1000)->Unit(benchmark::kMillisecond);

void ConstructAndShow(benchmark::State& state)
{
    if (!HaveFamilies(int(state.range(0))))
        state.SkipWithError("the families cannot be made");
    for (auto _ : state)
    {
        NVTextToolbar bar(nullptr);
        bar.show();
        bar.grab();
    }
}
BENCHMARK(ConstructAndShow)->Arg(1000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // None of the system's fonts.
    const QTemporaryDir folder;
    QFile fonts(folder.filePath(QStringLiteral("fonts.conf")));
    if (!fonts.open(QIODevice::WriteOnly))
        return 1;
    fonts.write("<?xml version=\"1.0\"?><fontconfig></fontconfig>");
    fonts.close();
    qputenv("FONTCONFIG_FILE", QFile::encodeName(fonts.fileName()));
    QApplication app(argc, argv);
    QApplication::setStyle(QStringLiteral("fusion"));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
