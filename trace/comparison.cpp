#include "trace/comparison.h"

#include "trace/mask.h"
#include "trace/meaning.h"
#include "trace/tracetr.h"

namespace trace {

namespace {

/// A frame of one of the traces with its place there.
struct Told
{
    qsizetype number;
    Direction direction;
    Meaning meaning;

    QString text() const
    {
        const QString arrow = direction == Direction::ToRegister ? QStringLiteral(">") : QStringLiteral("<");
        return tr("frame %1 %2 %3").arg(number).arg(arrow, meaning.title());
    }
    /// The same command or the same kind of answer, whatever is in it.
    bool isSameStep(const Told& other) const
    {
        return direction == other.direction && meaning.kind == other.meaning.kind
            && meaning.protocol == other.meaning.protocol && meaning.code == other.meaning.code;
    }
};

QList<Told> toldBy(const Trace& trace, bool isMasked)
{
    QList<Told> list;
    Mask mask;
    Decoder decoder;
    qsizetype number = 0;
    for (Frame frame : trace.frames) {
        ++number;
        if (isMasked)
            frame.bytes = mask.masked(frame);
        const Meaning meaning = decoder.decode(frame);
        if (!meaning.isSign())
            list.append({number, frame.direction, isMasked ? meaning.withoutPeople() : meaning});
    }
    return list;
}

class Comparison
{
public:
    Comparison(const QList<Told>& first, const QList<Told>& second, qsizetype most)
        : m_first(first)
        , m_second(second)
        , m_most(most)
    {
    }

    QStringList take();

private:
    void compareStep(const Told& one, const Told& other);
    /// Passes over what only one of the two has, to the next step that both have.
    void resume();
    void tellLone(const QString& text, const QList<Told>& list, qsizetype& at, qsizetype end);
    bool isFull() const { return m_lines.size() >= m_most; }

    const QList<Told>& m_first;
    const QList<Told>& m_second;
    qsizetype m_most;
    qsizetype m_atFirst = 0;
    qsizetype m_atSecond = 0;
    QStringList m_lines;
};

QStringList Comparison::take()
{
    while (!isFull() && m_atFirst < m_first.size() && m_atSecond < m_second.size()) {
        if (m_first.at(m_atFirst).isSameStep(m_second.at(m_atSecond)))
            compareStep(m_first.at(m_atFirst++), m_second.at(m_atSecond++));
        else
            resume();
    }
    tellLone(tr("only in the first: %1"), m_first, m_atFirst, m_first.size());
    tellLone(tr("only in the second: %1"), m_second, m_atSecond, m_second.size());
    return m_lines;
}

void Comparison::compareStep(const Told& one, const Told& other)
{
    for (const QString& difference : other.meaning.differencesFrom(one.meaning)) {
        if (!isFull())
            m_lines.append(QStringLiteral("%1: %2").arg(other.text(), difference));
    }
}

void Comparison::resume()
{
    constexpr qsizetype farthest = 60;
    for (qsizetype distance = 1; distance <= farthest; ++distance) {
        for (qsizetype ahead = 0; ahead <= distance; ++ahead) {
            const qsizetype one = m_atFirst + ahead;
            const qsizetype other = m_atSecond + distance - ahead;
            if (one >= m_first.size() || other >= m_second.size()
                || !m_first.at(one).isSameStep(m_second.at(other)))
                continue;
            tellLone(tr("only in the first: %1"), m_first, m_atFirst, one);
            return tellLone(tr("only in the second: %1"), m_second, m_atSecond, other);
        }
    }
    tellLone(tr("only in the first: %1"), m_first, m_atFirst, m_first.size());
    tellLone(tr("only in the second: %1"), m_second, m_atSecond, m_second.size());
}

void Comparison::tellLone(const QString& text, const QList<Told>& list, qsizetype& at, qsizetype end)
{
    for (; at < end; ++at) {
        if (!isFull())
            m_lines.append(text.arg(list.at(at).text()));
    }
}

} // namespace

QStringList differencesBetween(const Trace& first, const Trace& second, qsizetype most)
{
    const bool isMasked = first.hasStandIns() || second.hasStandIns();
    const QList<Told> one = toldBy(first, isMasked);
    const QList<Told> other = toldBy(second, isMasked);
    return Comparison(one, other, most).take();
}

} // namespace trace
