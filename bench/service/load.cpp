// How many sales the service makes when all registers are kept busy.

#include "keptconnection.h"
#include "measures.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace {

/// A till a register, each with its own thread and connection.
class Tills
{
public:
    Tills(quint16 port, const QByteArray& receipt)
        : m_port(port)
        , m_receipt(receipt)
    {
    }

    void add(const QString& registerName)
    {
        m_threads.emplace_back([this, registerName] { work(registerName); });
    }

    int salesIn(std::chrono::duration<double> time)
    {
        // The first one opens the shift.
        while (m_warm < m_threads.size() && !m_isOver)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        const int before = m_sales;
        std::this_thread::sleep_for(time);
        const int sales = m_sales - before;
        m_isOver = true;
        for (std::thread& thread : m_threads)
            thread.join();
        if (m_failure)
            std::rethrow_exception(m_failure);
        return sales;
    }

private:
    void work(const QString& registerName)
    {
        try {
            KeptConnection connection(m_port);
            connection.sell(registerName, newSaleId(), m_receipt);
            ++m_warm;
            while (!m_isOver) {
                connection.sell(registerName, newSaleId(), m_receipt);
                ++m_sales;
            }
        } catch (...) {
            const std::lock_guard lock(m_mutex);
            m_failure = std::current_exception();
            m_isOver = true;
        }
    }

    const quint16 m_port;
    const QByteArray m_receipt;
    std::atomic<size_t> m_warm = 0;
    std::atomic<int> m_sales = 0;
    std::atomic<bool> m_isOver = false;
    std::mutex m_mutex;
    std::exception_ptr m_failure;
    std::vector<std::thread> m_threads;
};

} // namespace

void load(const QStringList& arguments)
{
    Tills tills(static_cast<quint16>(arguments.at(0).toUInt()), receiptOf(arguments.at(2).toInt()));
    const double seconds = arguments.at(1).toDouble();
    const QStringList registers = arguments.mid(3);
    for (const QString& name : registers)
        tills.add(name);
    const int sales = tills.salesIn(std::chrono::duration<double>(seconds));
    std::printf("{\"sales\": %d, \"seconds\": %g}\n", sales, seconds);
}
