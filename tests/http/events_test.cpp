#include "http/eventstream.h"
#include "http/problem.h"
#include "message.h"

#include <gmock/gmock.h>

using http::Event;
using http::EventStream;
using http::Pending;
using http::Stream;
using testing::ElementsAre;

namespace {

/// The numbers, or "reset", of the events in a piece of a stream.
QByteArrayList eventsIn(const QByteArray& text)
{
    QByteArrayList events;
    for (const QByteArray& block : text.split('\n').join('\n').replace("\n\n", "\x1e").split('\x1e')) {
        if (block.contains("event: reset"))
            events.append("reset");
        else if (block.contains("data: "))
            events.append(block.mid(block.indexOf("{\"n\":") + 5).chopped(1));
    }
    return events;
}

class EventsTest : public testing::Test
{
protected:
    void publish(int count)
    {
        while (count-- > 0)
            m_events.publish("made", {{"n", ++m_last}});
    }
    std::shared_ptr<Stream> after(const QByteArray& id) const
    {
        return m_events.subscribe(message("GET", "/", {{"Last-Event-ID", id}}));
    }

    int m_last = 0;
    EventStream m_events{3, "run"};
};

TEST_F(EventsTest, AreTakenUpWhereTheClientWas)
{
    publish(5);
    const QList<std::pair<QByteArray, QByteArrayList>> rows{{"", {}}, {"run-5", {}}, {"run-4", {"5"}},
        {"run-2", {"3", "4", "5"}}, {"run-1", {"reset"}}, {"run-6", {"reset"}}, {"other-4", {"reset"}},
        {"run-x", {"reset"}}, {"5", {"reset"}}};
    for (const auto& [id, events] : rows)
        EXPECT_EQ(eventsIn(after(id)->take()), events) << id.constData();
    EXPECT_EQ(
        eventsIn(m_events.subscribe(message("GET", "/?lastEventId=run-4"))->take()), QByteArrayList({"5"}));
}

TEST_F(EventsTest, WakeTheirReadersAndResetTheSlow)
{
    const std::shared_ptr<Stream> stream = after({});
    int woken = 0;
    stream->onReady([&woken] { ++woken; });
    EXPECT_EQ(stream->take(), "retry: 1000\nid: run-0\n\n");
    publish(1);
    EXPECT_EQ(woken, 1);
    EXPECT_EQ(stream->take(), "id: run-1\nevent: made\ndata: {\"n\":1}\n\n");
    EXPECT_EQ(stream->take(), "");
    publish(4);
    EXPECT_EQ(eventsIn(stream->take()), QByteArrayList({"reset"}));
    publish(1);
    EXPECT_EQ(eventsIn(stream->take()), QByteArrayList({"6"}));
}

TEST_F(EventsTest, AreChosenByAFilter)
{
    const http::EventFilter even = [](const Event& event) { return event.data.value("n").toInt() % 2 == 0; };
    const std::shared_ptr<Stream> stream = m_events.subscribe(message("GET", "/"), even);
    const std::shared_ptr<Pending> pending = m_events.wait(even, std::chrono::seconds(1));
    publish(1);
    EXPECT_FALSE(pending->isOver());
    publish(2);
    EXPECT_EQ(eventsIn(stream->take()), QByteArrayList({"2"}));
    ASSERT_TRUE(pending->response());
    EXPECT_EQ(object(*pending->response()),
        QJsonObject({{"id", "run-2"}, {"event", "made"}, {"data", QJsonObject{{"n", 2}}}}));
}

TEST_F(EventsTest, AreWaitedForOnceHoweverItEnds)
{
    publish(5);
    EXPECT_TRUE(m_events.wait({}, std::chrono::seconds(1), "run-4")->response());
    EXPECT_THROW(m_events.wait({}, std::chrono::seconds(1), "run-1"), http::Problem);
    const std::shared_ptr<Pending> expired = m_events.wait({}, std::chrono::seconds(1));
    const std::shared_ptr<Pending> left = m_events.wait({}, std::chrono::seconds(1));
    expired->expire();
    left->leave();
    publish(1);
    EXPECT_EQ(expired->response()->status, 204);
    EXPECT_FALSE(left->response());
}

TEST_F(EventsTest, OneReaderMayGoWhileAnotherIsTold)
{
    std::shared_ptr<Stream> first = after({});
    std::shared_ptr<Stream> second = after({});
    const std::shared_ptr<Pending> pending = m_events.wait({}, std::chrono::seconds(1));
    first->onReady([&second] { second.reset(); });
    second->onReady([&first] { first.reset(); });
    pending->onAnswer([&first, &second] {
        first.reset();
        second.reset();
    });
    publish(1);
    EXPECT_FALSE(first || second);
    publish(1);
    EXPECT_EQ(object(*pending->response()).value("id"), "run-1");
}

TEST(Events, OfASecondRunHaveOtherIds)
{
    EXPECT_NE(EventStream().idOf(1), EventStream().idOf(1));
    EventStream kept(3, "run", 7);
    EXPECT_EQ(kept.idOf(kept.publish("made", {})), "run-8");
}

} // namespace
