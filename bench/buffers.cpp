// What grows with its size must grow no faster: receipts with many positions, long answers. No line.

#include "bodies.h"
#include "memoryline.h"
#include "samples.h"

#include "frposition.h"
#include "frspfsettings.h"
#include "spfhex/frspf.h"
#include "spfxml/frspf.h"
#include "spfxml/spffrcommand.h"

#include <QDomDocument>

#include <benchmark/benchmark.h>
#include <driverlogger.h>
#include <malloc.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <optional>
#include <stdexcept>

namespace {

// What a USB adapter passes on at a time.
constexpr qsizetype pieceSize = 62;
// Units of all sizes that are as large or smaller.
constexpr int turnLength = 1000;
const std::vector<int> answerSizes{10, 100, 1000, 10'000};

// A process that has had a long answer keeps its memory in hand. Fresh memory costs a call of the system a
// page, which is no work of the driver; what it adds is shown by "fresh".
class KeptMemory
{
public:
    KeptMemory() { set(std::numeric_limits<int>::max(), 0); }
    ~KeptMemory()
    {
        set(defaultTrimThreshold, defaultMappings);
        malloc_trim(0);
    }
    KeptMemory(const KeptMemory&) = delete;
    KeptMemory& operator=(const KeptMemory&) = delete;

private:
    static constexpr int defaultTrimThreshold = 128 * 1024;
    static constexpr int defaultMappings = 65536;
    static void set(int trimThreshold, int mappings)
    {
        mallopt(M_TRIM_THRESHOLD, trimThreshold);
        mallopt(M_MMAP_MAX, mappings);
    }
};

// The sizes take turns, the small ones often enough to make theirs as long, so that a busy moment of the
// machine hits all of them.
void growTo(benchmark::State& state, const std::vector<int>& sizes, const std::function<void(int)>& work)
{
    Samples samples;
    try {
        work(sizes.back());
        for (auto _ : state) {
            for (const int size : sizes) {
                const int count = std::max(1, turnLength / size);
                // What the allocator puts off after a large one is no work of the next.
                work(sizes.front());
                const double start = threadSeconds();
                for (int i = 0; i < count; ++i)
                    work(size);
                samples.add(std::to_string(size), (threadSeconds() - start) / count);
            }
        }
    } catch (const std::exception& failure) {
        return state.SkipWithError(failure.what());
    }
    samples.publish(state);
}

void receipts(benchmark::State& state, Language language)
{
    const KeptMemory memory;
    MemoryLine line(rememberedRegister(language));
    FrSpfSettings settings;
    const auto driver = makeDriver(language, line, settings);
    driver->portOpen();
    growTo(state, {1, 10, 100, 1000}, [&](int positions) { sell(*driver, positions); });
}

QByteArray longAnswer(qsizetype size)
{
    QByteArray answer(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ArmResponse><ResponseBody><RequestId>"
        "ID</RequestId><Result>0</Result></ResponseBody><ResponseData><![CDATA[<pa n=\"1\" t=\"7\">");
    for (int i = 0; answer.size() < size; ++i)
        answer += "<pa n=\"" + QByteArray::number(i) + "\" t=\"2\">10.50</pa>\n";
    return answer + "</pa>]]></ResponseData></ArmResponse>\n";
}

void answers(benchmark::State& state, bool fresh)
{
    std::optional<KeptMemory> memory;
    if (!fresh)
        memory.emplace();
    QMap<int, QByteArray> texts;
    for (const int kilobytes : answerSizes)
        texts[kilobytes] = longAnswer(kilobytes * 1000);
    QByteArray text;
    MemoryLine line(
        [&](const QByteArray& request) {
            const qsizetype from = request.indexOf("<RequestId>") + 11;
            const qsizetype size = request.indexOf('<', from) - from;
            return QByteArray(text).replace(text.indexOf("ID<"), 2, request.mid(from, size));
        },
        pieceSize);
    const spfxml::SpfFrCommand command(&line, driverLogger(QStringLiteral("spf_0")), QStringLiteral("13.0"));
    growTo(state, answerSizes, [&](int kilobytes) {
        text = texts.value(kilobytes);
        const QDomDocument data = command.requestData(spfxml::SpfFrCommand::ECommandCode::GetState, {}, 1);
        if (data.documentElement().lastChildElement().text() != QStringLiteral("10.50"))
            throw std::runtime_error("wrong answer");
    });
}

} // namespace

void registerReceipts()
{
    for (const Language language : {Language::Hex, Language::Xml}) {
        const std::string name = "receipt/" + languageName(language).toStdString();
        benchmark::RegisterBenchmark(
            name.c_str(), [=](benchmark::State& state) { receipts(state, language); });
    }
}

void registerAnswers()
{
    const auto add = [](const char* name, bool fresh, int repetitions) {
        benchmark::RegisterBenchmark(name, [=](benchmark::State& state) { answers(state, fresh); })
            ->Iterations(1)
            ->Repetitions(repetitions);
    };
    add("answer/XML", false, 7);
    add("answer/XML/fresh", true, 3);
}
