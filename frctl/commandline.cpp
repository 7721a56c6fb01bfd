#include "commandline.h"

#include "errors.h"
#include "frctltr.h"
#include "optiontable.h"
#include "suggestion.h"

namespace frctl {

namespace {

const QString longPrefix = QStringLiteral("--");

bool isOption(const QString& argument)
{
    return argument.size() > 1 && argument.startsWith(QLatin1Char('-')) && !argument.at(1).isDigit()
        && argument.at(1) != QLatin1Char('.') && argument.at(1) != QLatin1Char(',');
}

const OptionRow& optionOf(const QString& argument)
{
    const bool isLong = argument.startsWith(longPrefix);
    const QString name = argument.mid(isLong ? 2 : 1);
    const OptionRow* const row
        = isLong ? findOption(name) : (name.size() == 1 ? findLetter(name.at(0)) : nullptr);
    if (row == nullptr)
        throw UsageError(
            tr("unknown option %1%2").arg(argument, suggestion(name, optionNames(), longPrefix)));
    return *row;
}

bool isKnownOption(const QString& argument)
{
    return argument.startsWith(longPrefix) && findOption(argument.mid(2)) != nullptr;
}

class Reader
{
public:
    explicit Reader(const QStringList& arguments)
        : m_arguments(arguments)
    {
    }

    CommandLine read()
    {
        while (m_next < m_arguments.size()) {
            const QString argument = m_arguments.at(m_next++);
            if (argument == longPrefix)
                takeRest();
            else if (isOption(argument))
                takeOption(argument);
            else
                m_line.words.append(argument);
        }
        return m_line;
    }

private:
    void takeRest()
    {
        m_line.words += m_arguments.mid(m_next);
        m_next = m_arguments.size();
    }

    void takeOption(const QString& argument)
    {
        const qsizetype sign = argument.indexOf(QLatin1Char('='));
        const OptionRow& row = optionOf(argument.left(sign));
        const bool hasValue = sign >= 0;
        if (hasValue && row.isSwitch())
            throw UsageError(tr("--%1 takes no value").arg(QLatin1String(row.name)));
        Setting setting{&row};
        if (!row.isSwitch())
            setting.value = hasValue ? argument.mid(sign + 1) : nextValue(row);
        m_line.options.append(setting);
    }

    QString nextValue(const OptionRow& row)
    {
        // Whoever has forgotten the value does not mean the next option by it.
        if (m_next == m_arguments.size() || isKnownOption(m_arguments.at(m_next)))
            throw UsageError(tr("--%1 needs %2").arg(QLatin1String(row.name), QLatin1String(row.value)));
        return m_arguments.at(m_next++);
    }

    const QStringList m_arguments;
    qsizetype m_next = 1;
    CommandLine m_line;
};

} // namespace

CommandLine readCommandLine(const QStringList& arguments)
{
    return Reader(arguments).read();
}

} // namespace frctl
