#include "errorkind.h"

#include <algorithm>
#include <iterator>

namespace sale {

namespace {

struct KindRow
{
    const char* name;
    const char* action;
    /// Such an error may come behind the document, and then the action is another one.
    bool mayBeBehind = true;
};

// In the order of the enumeration.
constexpr KindRow kinds[] = {
    {"paper", "Вставьте новую чековую ленту и повторите тот же документ"},
    {"cover", "Закройте крышку принтера, проверьте ленту и повторите тот же документ"},
    {"shiftExpired", "Смена длится более 24 часов: снимите Z-отчёт и повторите документ"},
    {"shiftClosed", "Откройте смену и повторите документ"},
    {"driveFull",
        "Память фискального накопителя исчерпана: прекратите продажи и вызовите сервис для его замены"},
    {"driveExpired",
        "Срок или ресурс фискального накопителя исчерпан: прекратите продажи и вызовите сервис для его замены"},
    {"ofdBlocked", "Чеки не уходят в ОФД: проверьте интернет на кассе; если не помогло, вызовите сервис"},
    {"clock", "Проверьте дату и время кассы, исправьте их при закрытой смене и повторите документ"},
    {"mark", "Не продавайте этот маркированный товар: отсканируйте код ещё раз или отложите товар"},
    {"data", "Исправьте то, что названо в сообщении, и повторите документ"},
    {"cash", "В денежном ящике не хватает наличных: внесите деньги или уменьшите сумму"},
    {"busy", "Кассу занимает другая программа: дождитесь её и повторите документ"},
    {"line", "Проверьте питание кассы и кабель, затем повторите тот же документ: дважды он не пробьётся"},
    {"wrongRegister", "Подключена не та касса: подключите нужную и повторите тот же документ"},
    {"fatal", "Касса или фискальный накопитель неисправны: прекратите продажи и вызовите сервис", false},
    {"internal", "Ошибка программы или её настройки: сообщите администратору текст сообщения", false},
    {"other", "Прочтите сообщение кассы, устраните причину и повторите тот же документ"},
};

const KindRow& rowOf(ErrorKind kind)
{
    return kinds[static_cast<size_t>(kind)];
}

} // namespace

QString errorKindName(ErrorKind kind)
{
    return QString::fromLatin1(rowOf(kind).name);
}

ErrorKind errorKindNamed(const QString& name)
{
    const auto* const found = std::find_if(std::begin(kinds), std::end(kinds),
        [&](const KindRow& row) { return name == QLatin1String(row.name); });
    return found == std::end(kinds) ? ErrorKind::Other : static_cast<ErrorKind>(found - std::begin(kinds));
}

QString errorAction(ErrorKind kind, const std::optional<DocumentState>& state)
{
    const KindRow& row = rowOf(kind);
    if (row.mayBeBehind && state == DocumentState::Issued)
        return QStringLiteral("Документ пробит, не повторяйте его; прочтите сообщение и устраните причину");
    if (row.mayBeBehind && state == DocumentState::Unknown)
        return QStringLiteral("Неизвестно, пробит ли документ: не повторяйте его, посмотрите ленту кассы");
    return QString::fromUtf8(row.action);
}

} // namespace sale
