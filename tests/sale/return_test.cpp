// What comes back of a sale.

#include "cashdesk.h"
#include "idconflict.h"
#include "queueddocument.h"
#include "recordingdriver.h"
#include "returncompletion.h"
#include "returnrefused.h"
#include "salereturn.h"
#include "sqlitestore.h"

#include <gtest/gtest.h>

#include <memory>

using namespace sale;

namespace {

const QString saleId = QStringLiteral("sale-0001");

QByteArray receiptOf(const char* type, const QByteArray& items, const QByteArray& paid)
{
    return QByteArray(R"({"type": ")") + type + R"(", "taxationType": "osn", "operator": {"name": "Иванова"},
        "items": [)"
        + items + R"(], "payments": [{"type": "cash", "sum": )" + paid + "}]}";
}

// Bread at two prices, as of a pack; what is weighed; a discount; a marked piece.
const QByteArray soldItems = R"(
    {"name": "Хлеб", "price": 10, "quantity": 3, "amount": 30, "tax": {"type": "vat10"}},
    {"name": "Хлеб", "price": 9, "quantity": 1, "amount": 9, "tax": {"type": "vat10"}},
    {"type": "text", "text": "Хлеб"},
    {"name": "Сыр", "price": 100.01, "quantity": 1.5, "amount": 150.02, "measurementUnit": "kilogram",
        "tax": {"type": "vat22"}},
    {"name": "Торт", "price": 100, "quantity": 2, "infoDiscountAmount": 20, "amount": 180,
        "tax": {"type": "vat22"}},
    {"name": "Туфли", "price": 50, "quantity": 1, "amount": 50, "tax": {"type": "vat22"},
        "markingCode": {"type": "other", "mark": "010460043993125621JgXJ5.T"}})";

class Return : public testing::Test
{
protected:
    Return() { issue(saleId, "sell", receiptOf("sell", soldItems, "500")); }

    void issue(const QString& id, const QString& kind, const QByteArray& body,
        DocumentState state = DocumentState::Issued, int times = 1)
    {
        store->accept({id, kind, body, "till1"});
        store->settle(id, store->begin(id, {{{"drive", "9999"}}}).value(),
            {.state = state, .documentNumber = ++number, .times = times});
    }

    static DocumentRequest request(const QString& id, const QByteArray& items, const QByteArray& paid = "500")
    {
        return {id, "sellReturn", receiptOf("sellReturn", items, paid), "till1", {}, {}, saleId};
    }

    QStringList refusalOf(const DocumentRequest& back)
    {
        QStringList errors;
        try {
            acceptReturn(*store, back);
        } catch (const ReturnRefused& refusal) {
            for (const receipt::Finding& error : refusal.errors())
                errors.append(error.path + ' ' + error.reason);
        }
        return errors;
    }
    QStringList refusalOf(const QString& id, const QByteArray& items, const QByteArray& paid = "500")
    {
        return refusalOf(request(id, items, paid));
    }

    std::unique_ptr<SqliteStore> store = std::make_unique<SqliteStore>(QStringLiteral(":memory:"));
    quint32 number = 10;
};

QByteArray bread(const char* quantity, const char* price = "10")
{
    return QByteArray(R"({"name": "Хлеб", "price": )") + price + R"(, "quantity": )" + quantity + "}";
}

TEST_F(Return, PositionsAreHeldAgainstTheSale)
{
    const std::pair<QByteArray, QString> rows[] = {
        {bread("3"), ""},
        {bread("1", "9"), ""},
        {bread("3.001"), "items[0].quantity is more than is left of the sale at this price, 3"},
        {bread("2", "9"), "items[0].quantity is more than is left of the sale at this price, 1"},
        {bread("2") + "," + bread("2"), "items[0].quantity is more than"},
        {bread("1", "11"), "items[0].price is not the price at which it was issued, 10.00, 9.00"},
        {R"({"name": "Вода", "price": 1, "quantity": 1, "amount": 1, "tax": {"type": "none"}})",
            "items[0] was not sold with this sale"},
        {R"({"name": "Сыр", "quantity": 0.7})", ""},
        {R"({"name": "Сыр", "quantity": 1.6})", "items[0].quantity is more than is left"},
        // After the discount.
        {R"({"name": "Торт", "quantity": 1})", ""},
        {R"({"name": "Торт", "price": 100, "quantity": 1})",
            "items[0].price is not the price at which it was issued, 90.00"},
        // The piece itself, whatever it is called now.
        {R"({"name": "Туфли коричневые", "quantity": 1, "markingCode": "010460043993125621JgXJ5.T"})", ""},
        {R"({"name": "Туфли", "quantity": 1, "price": 50, "amount": 50, "tax": {"type": "vat22"},
             "markingCode": "010460043993125621JgXJ5.X"})",
            "items[0] was not sold with this sale"},
        {R"({"name": "Туфли", "quantity": 1, "price": 50, "amount": 50, "tax": {"type": "vat22"}})",
            "items[0] was not sold with this sale"},
    };
    int round = 0;
    for (const auto& [items, expected] : rows) {
        const QString id = QString("back-000%1").arg(++round);
        const QString refusal = refusalOf(id, items).join("; ");
        EXPECT_EQ(refusal.left(expected.isEmpty() ? -1 : expected.size()), expected) << items.toStdString();
        EXPECT_EQ(store->findId(id).has_value(), refusal.isEmpty());
        if (refusal.isEmpty())
            store->withdraw(id);
    }
}

TEST_F(Return, ReturnsThatAreIssuedOrMayBeCount)
{
    const std::pair<DocumentState, bool> rows[]
        = {{DocumentState::Queued, true}, {DocumentState::Running, true}, {DocumentState::Issued, true},
            {DocumentState::Unknown, true}, {DocumentState::NotIssued, false}};
    for (const auto& [state, counts] : rows) {
        store = std::make_unique<SqliteStore>(QStringLiteral(":memory:"));
        issue(saleId, "sell", receiptOf("sell", soldItems, "500"));
        ASSERT_EQ(refusalOf("back-one", bread("2")), QStringList());
        if (state != DocumentState::Queued) {
            const int attempt = store->begin("back-one", {}).value();
            if (state != DocumentState::Running)
                store->settle("back-one", attempt, {.state = state, .documentNumber = 99});
        }
        EXPECT_EQ(refusalOf("back-two", bread("2")).isEmpty(), !counts) << stateName(state).toStdString();
        EXPECT_EQ(refusalOf("back-three", bread("1")), QStringList());
        // The same once more is the same return.
        EXPECT_EQ(refusalOf("back-three", bread("1")), QStringList());
    }
}

TEST_F(Return, HasASaleThatIsIssued)
{
    const auto refusal = [this](const QString& ofSale) {
        DocumentRequest back = request("back-one", bread("1"));
        back.returnOf = ofSale;
        // Nothing is taken from elsewhere.
        back.body.replace(
            "\"quantity\": 1", "\"quantity\": 1, \"amount\": 10, \"tax\": {\"type\": \"vat10\"}");
        return refusalOf(back).join("; ");
    };
    issue("unknown", "sell", "{}", DocumentState::Unknown);
    issue("returned", "sellReturn", "{}");
    issue("no-json", "sell", "milk 10.00");
    EXPECT_EQ(refusal("nothing"), "returnOf is no document of this journal");
    EXPECT_EQ(refusal("unknown"), "returnOf is not known to be issued");
    EXPECT_EQ(refusal("returned"), "returnOf is not a sale");
    EXPECT_EQ(refusal("no-json"), "returnOf is a sale whose positions the journal does not keep");
    EXPECT_EQ(refusal(saleId), "");
}

TEST_F(Return, NeverExceedsTheSaleAsOftenAsItWasIssued)
{
    const std::tuple<int, QByteArray, QByteArray, QStringList> rows[] = {
        {2, R"({"name": "Хлеб", "price": 10, "quantity": 1, "amount": 10, "tax": {"type": "vat10"}})",
            bread("1"), {"", "", "items[0].quantity is more than is left of the sale at this price, 0"}},
        // Rounding adds nothing either.
        {1, R"({"name": "Соль", "price": 0.01, "quantity": 1, "amount": 0.01, "tax": {"type": "none"}})",
            R"({"name": "Соль", "quantity": 0.5})", {"", " comes to more than is left of the sale, 0.00"}},
    };
    for (const auto& [times, soldOnce, givenBack, expected] : rows) {
        const QString sold = QString("sale-%1").arg(times);
        issue(sold, "sell", receiptOf("sell", soldOnce, "10"), DocumentState::Issued, times);
        QStringList refusals;
        for (qsizetype place = 0; place < expected.size(); ++place) {
            DocumentRequest back = request(QString("back-%1-%2").arg(times).arg(place), givenBack, "10");
            back.returnOf = sold;
            refusals.append(refusalOf(back).join("; "));
        }
        EXPECT_EQ(refusals, expected) << givenBack.toStdString();
    }
}

TEST_F(Return, IsMadeWithThePricesOfTheSaleUnderTheBodyOfTheClient)
{
    const DocumentRequest back = request("back-one",
        R"({"name": "Торт", "quantity": 1}, {"name": "Сыр", "quantity": 0.3}, {"name": "Хлеб", "price": 9, "quantity": 1})",
        "129");
    acceptReturn(*store, back);
    EXPECT_EQ(store->findId("back-one")->request.body, back.body);
    EXPECT_THROW(acceptReturn(*store, request("back-one", bread("1"))), IdConflict);
    BasicFrSettings settings;
    RecordingDriver driver(&settings);
    driver.numbers = {11};
    driver.payments = {{0, 129.0}};
    CashDesk desk(driver, *store, {receipt::Protocol::Hex, "till1"});
    const QueuedDocument made = makeQueued(desk, "back-one");
    EXPECT_EQ(made.answer.state, DocumentState::Issued)
        << (made.answer.error ? made.answer.error->text.toStdString() : "");
    ASSERT_EQ(made.answer.items.size(), 3);
    const double amounts[] = {90, 30, 9};
    for (int place = 0; place < 3; ++place)
        EXPECT_EQ(made.answer.items.at(place).toObject().value("amount").toDouble(), amounts[place]) << place;
    EXPECT_EQ(made.answer.total, 12900);
    // What stands at two prices must name the one.
    const QByteArray body = receiptOf("sellReturn", R"({"name": "Хлеб", "quantity": 1})", "10");
    EXPECT_FALSE(completedReturn(body, store->findId(saleId).value()).contains("price"));
    EXPECT_EQ(completedReturn("{", store->findId(saleId).value()), "{");
}

} // namespace
