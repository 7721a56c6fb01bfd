// A document that waits in the journal, and the register that it waits for.

#pragma once

#include "cashdesk.h"
#include "queueddocument.h"
#include "recordingdriver.h"
#include "sqlitestore.h"

#include <gtest/gtest.h>

#include <memory>

namespace sale {

class Queue : public testing::Test
{
protected:
    inline static const QString queuedId = QStringLiteral("shop-0001");
    inline static const QByteArray receiptJson
        = R"({"type": "sell", "taxationType": "osn", "operator": {"name": "Иванова"},
        "items": [{"name": "Хлеб", "price": 10, "quantity": 2, "amount": 20, "tax": {"type": "vat10"}}],
        "payments": [{"type": "cash", "sum": 30}]})";
    inline static const QByteArray marked
        = QByteArray(receiptJson)
              .replace("\"price\": 10, \"quantity\": 2, \"amount\": 20",
                  "\"price\": 20, \"quantity\": 1, \"amount\": 20, \"markingCode\": {\"type\": \"other\", "
                  "\"mark\": \"010460043993125621JgXJ5.T\"}");

    Queue()
    {
        driver.payments = {{0, 20.0}};
        // The registration alone, which a journal need not know.
        driver.numbers = {1};
    }

    DeskOptions options(bool opensShift = true) const
    {
        DeskOptions made{{receipt::Protocol::Hex, true}, "till1", {"Иванова", {}, {}}};
        made.opensShift = opensShift;
        made.markPolicy = MarkPolicy::Strict;
        return made;
    }
    void accept(const QString& kind, const QByteArray& body)
    {
        journal->accept({queuedId, kind, body, "till1"});
    }
    QueuedDocument made(bool opensShift = true)
    {
        CashDesk desk(driver, *journal, options(opensShift));
        return makeQueued(desk, queuedId);
    }
    std::string told() { return std::exchange(driver.calls, {}); }

    BasicFrSettings settings;
    RecordingDriver driver{&settings};
    std::unique_ptr<SqliteStore> journal = std::make_unique<SqliteStore>(QStringLiteral(":memory:"));
};

} // namespace sale
