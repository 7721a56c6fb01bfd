#include "trace/script.h"

#include <algorithm>

namespace trace {

namespace {

class Sorting
{
public:
    void add(const Frame& frame);
    QList<Exchange> take() { return std::move(m_exchanges); }

private:
    void addRequest(const Frame& frame, const Meaning& meaning);
    void addAnswer(const Frame& frame, const Meaning& meaning);

    Decoder m_decoder;
    QList<Exchange> m_exchanges;
    bool m_isAsked = false;
};

void Sorting::add(const Frame& frame)
{
    const Meaning meaning = m_decoder.decode(frame);
    if (frame.direction == Direction::ToRegister)
        addRequest(frame, meaning);
    else if (!m_exchanges.isEmpty())
        addAnswer(frame, meaning);
}

void Sorting::addRequest(const Frame& frame, const Meaning& meaning)
{
    m_isAsked = meaning.kind == Meaning::Kind::Enquiry;
    if (meaning.isRequest())
        m_exchanges.append({frame, meaning, {}});
}

void Sorting::addAnswer(const Frame& frame, const Meaning& meaning)
{
    const bool isTold = m_isAsked && meaning.kind == Meaning::Kind::Acknowledge;
    m_isAsked = false;
    if (!isTold)
        m_exchanges.last().answers.append(frame);
}

/// Over XML there is none.
bool isStartOfWork(const Meaning& meaning)
{
    return meaning.kind == Meaning::Kind::Request && meaning.protocol == QStringLiteral("HEX")
        && meaning.code == QStringLiteral("00");
}

} // namespace

const Frame* Exchange::answer() const
{
    const auto counts = [this](const Frame& frame) {
        const Meaning told = Decoder().decode(frame);
        return frame.bytes != request.bytes && told.kind == Meaning::Kind::Answer
            && (told.id == meaning.id || meaning.id.isEmpty());
    };
    const auto found = std::find_if(answers.crbegin(), answers.crend(), counts);
    return found == answers.crend() ? nullptr : &*found;
}

bool isHex(const Trace& trace)
{
    // The first one tells, and the rest may be the work of weeks.
    Decoder decoder;
    for (const Frame& frame : trace.frames) {
        const Meaning meaning = decoder.decode(frame);
        if (frame.direction == Direction::ToRegister && meaning.isRequest())
            return meaning.protocol == QStringLiteral("HEX");
    }
    return false;
}

QStringList changesOf(const Trace& trace)
{
    QStringList names;
    for (const Exchange& exchange : exchangesOf(trace)) {
        const Meaning& meaning = exchange.meaning;
        if (meaning.kind == Meaning::Kind::Request && !meaning.isQuestion && !isStartOfWork(meaning))
            names.append(meaning.name.isEmpty() ? meaning.code : meaning.name);
    }
    names.removeDuplicates();
    return names;
}

bool startsWork(const Trace& trace)
{
    const QList<Exchange> exchanges = exchangesOf(trace);
    return std::any_of(exchanges.cbegin(), exchanges.cend(),
        [](const Exchange& exchange) { return isStartOfWork(exchange.meaning); });
}

QList<Exchange> exchangesOf(const Trace& trace)
{
    Sorting sorting;
    for (const Frame& frame : trace.frames)
        sorting.add(frame);
    return sorting.take();
}

} // namespace trace
