// A journal, whatever keeps it.

#pragma once

#include "documentstore.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <latch>
#include <memory>
#include <thread>
#include <vector>

namespace sale {

struct BackEnd
{
    const char* name;
    /// Another opening of the same journal, as another program has it.
    std::unique_ptr<DocumentStore> (*open)(const QTemporaryDir& folder);
};

/// Those that this test program is about.
QList<BackEnd> backEnds();

inline const QJsonObject markBefore{{"drive", "9999"}, {"lastDocument", 7}};
inline constexpr std::array states{DocumentState::Queued, DocumentState::Running, DocumentState::Issued,
    DocumentState::NotIssued, DocumentState::Unknown};

class StoreFixture : public testing::TestWithParam<BackEnd>
{
protected:
    std::unique_ptr<DocumentStore> open() const { return GetParam().open(folder); }

    static DocumentRequest request(const QString& id, const QByteArray& body = R"({"a": 1, "b": 2})")
    {
        return {id, "sell", body, "till1"};
    }

    /// Brings a new document into the state.
    void bring(const QString& id, DocumentState state, quint32 number = 0)
    {
        store->accept(request(id));
        if (state == DocumentState::Queued)
            return;
        const int attempt = store->begin(id, {markBefore}).value();
        if (state != DocumentState::Running)
            store->settle(id, attempt, {.state = state, .documentNumber = number});
    }

    /// Each in a thread of its own, with the journal opened for itself, all at the same moment.
    void atOnce(const std::vector<std::function<void(DocumentStore& own)>>& works) const
    {
        std::latch start(std::ssize(works));
        std::vector<std::thread> threads;
        for (const auto& work : works) {
            threads.emplace_back([this, &start, &work] {
                const auto own = open();
                start.arrive_and_wait();
                work(*own);
            });
        }
        for (std::thread& thread : threads)
            thread.join();
    }

    QStringList idsOf(const DocumentQuery& query) const
    {
        QStringList ids;
        for (const StoredDocument& document : store->find(query))
            ids.append(document.request.id);
        return ids;
    }

    QTemporaryDir folder;
    std::unique_ptr<DocumentStore> store = open();
};

} // namespace sale
