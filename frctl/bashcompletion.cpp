#include "completion.h"
#include "optiontable.h"

namespace frctl {

namespace {

// The command is the first word that is neither an option nor the value of one. "=" is a word by itself.
const char* const bashFrame
    = R"(# bash completion for frctl: made from its table of commands by "frctl completion bash".
_frctl()
{
    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]}
    local command= isValue= words= files= i
    [[ $cur == = ]] && cur=
    [[ $prev == = ]] && prev=${COMP_WORDS[COMP_CWORD-2]}
    for ((i = 1; i < COMP_CWORD; i++)); do
        [[ ${COMP_WORDS[i]} == = ]] && continue
        if [[ $isValue ]]; then
            isValue=
            continue
        fi
        case ${COMP_WORDS[i]} in
            %1) isValue=1 ;;
            -*) ;;
            *) command=${COMP_WORDS[i]}; break ;;
        esac
    done
    case $prev in
        --register) words=$(frctl config list 2>/dev/null) ;;
%2        *)
            case $command in
                "") words="%3" ;;
%4            esac ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$cur")
    if [[ $files && $cur != -* ]]; then
        compopt -o filenames 2>/dev/null
        mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen -f -- "$cur")
    fi
}
complete -F _frctl frctl)";

QString longName(const OptionRow& row)
{
    return QStringLiteral("--") + QLatin1String(row.name);
}

QString actionOf(const Offer& offer, const QString& more = {})
{
    QString action;
    const QString words = (offer.words + QStringList{more}).join(QLatin1Char(' ')).trimmed();
    if (!words.isEmpty())
        action = QStringLiteral(" words=\"%1\"").arg(words);
    if (offer.withFiles)
        action += (action.isEmpty() ? QString() : QStringLiteral(";")) + QStringLiteral(" files=1");
    return action;
}

QString valueCases()
{
    QString cases;
    for (const OptionRow& row : optionRows()) {
        if (!row.isSwitch() && qstrcmp(row.name, "register") != 0)
            cases += QStringLiteral("        %1)%2 ;;\n").arg(longName(row), actionOf(offerOf(row.value)));
    }
    return cases;
}

template <typename Takes>
QString optionWords(const Takes& takes)
{
    QStringList words;
    for (const OptionRow& row : optionRows()) {
        if (takes(row))
            words.append(longName(row));
    }
    return words.join(QLatin1Char(' '));
}

QString commandCases()
{
    QString cases;
    for (const Command& command : commands()) {
        const QString options = optionWords([&command](const OptionRow& row) { return command.takes(row); });
        cases += QStringLiteral("                %1)%2 ;;\n")
                     .arg(QLatin1String(command.name), actionOf(offerOf(command.arguments), options));
    }
    return cases;
}

} // namespace

QString bashCompletion()
{
    const auto hasValue = [](const OptionRow& row) { return !row.isSwitch(); };
    const auto isShared = [](const OptionRow& row) { return row.group != OptionRow::Own; };
    const QString withValue = optionWords(hasValue).replace(QLatin1Char(' '), QLatin1Char('|'));
    const QString first = actionOf(offerOf(QStringLiteral("[COMMAND]")), optionWords(isShared))
                              .section(QLatin1Char('"'), 1, 1);
    return QString::fromUtf8(bashFrame).arg(withValue, valueCases(), first, commandCases());
}

} // namespace frctl
