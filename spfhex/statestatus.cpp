#include "statestatus.h"

#include "answers.h"
#include "frame.h"
#include "protocol.h"

#include <QMap>
#include <QString>

namespace spfhex {

namespace {

const QStringList& fatalLabels()
{
    static const QStringList labels{
        QStringLiteral("  неверная контрольная сумма сменных счетчиков в NVRAM: "),
        QStringLiteral("  неверная контрольная сумма конфигурации в NVRAM: "),
        QStringLiteral("  ошибка OTP: "),
        QStringLiteral("  неверная контрольная сумма NVRAM: "),
        QStringLiteral("  ошибка флэш-памяти: "),
        QStringLiteral("  инсталляция не произведена: "),
        QStringLiteral("  фатальная ошибка ФН: "),
        QStringLiteral("  расхождение данных ККТ и ФН: "),
    };
    return labels;
}

const QStringList& flagLabels()
{
    static const QStringList labels{
        QStringLiteral("  не была вызвана функция 0: "),
        QStringLiteral("  нефискальный (тестовый) режим: "),
        QStringLiteral("  смена открыта: "),
        QStringLiteral("  смена больше 24 часов: "),
        QStringLiteral("  архив ФН закрыт: "),
        QStringLiteral("  ФН не активизирован: "),
    };
    return labels;
}

QString documentTypeText(int type)
{
    static const QStringList texts{
        QStringLiteral("Документ закрыт"),
        QStringLiteral("Нефискальный документ"),
        QStringLiteral("Приход"),
        QStringLiteral("Возврат прихода"),
        QStringLiteral("Внесение в кассу"),
        QStringLiteral("Изъятие"),
        QStringLiteral("Расход"),
        QStringLiteral("Возврат расхода"),
        QStringLiteral("Коррекция прихода"),
        QStringLiteral("Коррекция расхода"),
        QStringLiteral("Коррекция возврата прихода"),
        QStringLiteral("Коррекция возврата расхода"),
    };
    return texts.value(type);
}

QString documentStateText(int state)
{
    static const QMap<int, QString> texts{
        {0, QStringLiteral("Документ закрыт")},
        {1, QStringLiteral("Документ открыт")},
        {3, QStringLiteral("Добавлена позиция")},
        {5, QStringLiteral("Подитог")},
        {7, QStringLiteral("Оплата")},
        {8, QStringLiteral("Документ завершен. Требуется закрытие")},
        {9, QStringLiteral("Статус документа в ФН неизвестен")},
        {16, QStringLiteral("Отмена документа невозможна")},
    };
    return texts.value(state);
}

QStringList flagBlock(const QString& heading, const QStringList& labels, const std::bitset<8>& bits)
{
    QStringList lines{heading};
    for (qsizetype i = 0; i < labels.size(); ++i) {
        const bool isSet = bits.test(static_cast<size_t>(i));
        lines.append(labels.at(i) + (isSet ? QStringLiteral("да") : QStringLiteral("нет")));
    }
    return lines;
}

} // namespace

StateStatus::StateStatus(const QByteArray& data)
{
    const QList<QByteArray> fields = frame::fields(data);
    const auto number = [&fields](qsizetype index) { return fields.value(index).toInt(nullptr, 10); };
    fatalStatus = static_cast<quint8>(number(answer::FatalStatus));
    currentFlags = static_cast<quint8>(number(answer::CurrentFlags));
    const int document = number(answer::Document);
    documentType = document & 0xFF;
    documentState = (document >> 8) & 0xFF;
}

bool StateStatus::isNotInitialized() const
{
    return currentFlags.test(protocol::NotInitialized);
}

bool StateStatus::isDocumentClosed() const
{
    return documentState == DocumentClosed;
}

bool StateStatus::isCloseDocumentRequired() const
{
    return documentState == CloseRequired || documentState == CancelImpossible;
}

bool StateStatus::isShiftOpened() const
{
    return currentFlags.test(protocol::ShiftOpened);
}

QStringList StateStatus::getFatalStateStatus() const
{
    return flagBlock(QStringLiteral("Статус фатального состояния:"), fatalLabels(), fatalStatus);
}

QStringList StateStatus::getCurrentFlagsStatus() const
{
    return flagBlock(QStringLiteral("Статус текущих флагов:"), flagLabels(), currentFlags);
}

QStringList StateStatus::getDocumentStatus() const
{
    return {
        QStringLiteral("Статус документа:"),
        QStringLiteral("  тип текущего открытого документа: ") + documentTypeText(documentType),
        QStringLiteral("  состояние  документа: ") + documentStateText(documentState),
    };
}

} // namespace spfhex
