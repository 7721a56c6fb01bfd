#pragma once

#include <QStringList>

#include <functional>

namespace emulator {

/// The paper. Lines go to the listener as they are printed, or are kept when there is none.
class Tape
{
public:
    using Listener = std::function<void(const QStringList& lines)>;

    void setListener(Listener listener) { m_listener = std::move(listener); }
    void print(const QStringList& lines);
    const QStringList& lines() const { return m_lines; }
    QString text() const { return m_lines.join(QLatin1Char('\n')); }
    void clear() { m_lines.clear(); }

private:
    Listener m_listener;
    QStringList m_lines;
};

} // namespace emulator
