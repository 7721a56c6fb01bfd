<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="en">
<context>
    <name>QIODevice</name>
    <message>
        <source>No such file or directory</source>
        <translation>нет такого файла или каталога</translation>
    </message>
    <message>
        <source>Permission denied</source>
        <translation>отказано в доступе</translation>
    </message>
    <message>
        <source>No space left on device</source>
        <translation>на устройстве нет места</translation>
    </message>
</context>
<context>
    <name>frctl</name>
    <message>
        <source>standard output: </source>
        <translation>стандартный вывод: </translation>
    </message>
    <message>
        <source>
Try frctl help%1.</source>
        <translation>
Справка: frctl help%1.</translation>
    </message>
    <message>
        <source>the document was not opened</source>
        <translation>документ не открывался</translation>
    </message>
    <message>
        <source>sale %1 of an earlier run: %2</source>
        <translation>продажа %1 прошлого запуска: %2</translation>
    </message>
    <message>
        <source>test drive %1: what it signs is no fiscal document</source>
        <translation>отладочный накопитель %1: подписанное им — не фискальный документ</translation>
    </message>
    <message>
        <source>--trace goes with commands that work a register</source>
        <translation>--trace — для команд, которые работают с кассой</translation>
    </message>
    <message>
        <source>%1 needs a register: --port, or --register with the name that it has in the configuration</source>
        <translation>команде %1 нужна касса: --port или --register с её именем в конфигурации</translation>
    </message>
    <message>
        <source>is missing: to be issued, the receipt needs the cashier of --cashier</source>
        <translation>отсутствует: чтобы пробить чек, нужен кассир из --cashier</translation>
    </message>
    <message>
        <source>^line 1: |, line 1(?=;)</source>
        <extracomment>What is taken out of &quot;line 1: ...&quot; and of &quot;..., line 1; ...&quot; as the receipt library says them.</extracomment>
        <translation>^строка 1: |, строка 1(?=;)</translation>
    </message>
    <message>
        <source>%1 checked: %2 with errors, %3 with warnings</source>
        <translation>проверено %1; с ошибками: %2, с предупреждениями: %3</translation>
    </message>
    <message>
        <source>1 receipt</source>
        <translation>чеков: 1</translation>
    </message>
    <message>
        <source>%1 receipts</source>
        <translation>чеков: %1</translation>
    </message>
    <message>
        <source>: error</source>
        <translation>: ошибка</translation>
    </message>
    <message>
        <source>: warning</source>
        <translation>: предупреждение</translation>
    </message>
    <message>
        <source>Show this help, or that of a command.</source>
        <translation>Показать эту справку или справку команды.</translation>
    </message>
    <message>
        <source>What the plugin says of itself; needs no register.</source>
        <translation>Что плагин сообщает о себе; касса не нужна.</translation>
    </message>
    <message>
        <source>The serial ports of this machine; those named, or with --all each, are asked for a register.</source>
        <translation>Последовательные порты этой машины; названные, а с --all все, опрашиваются: есть ли там касса.</translation>
    </message>
    <message>
        <source>What may keep this computer and the register from selling, a line each.</source>
        <translation>Что может помешать этому компьютеру и кассе продавать, по строке на пункт.</translation>
    </message>
    <message>
        <source>The register&apos;s identity, clock, shift and state.</source>
        <translation>Модель и номер кассы, часы, смена и состояние.</translation>
    </message>
    <message>
        <source>Open the shift if it is closed.</source>
        <translation>Открыть смену, если она закрыта.</translation>
    </message>
    <message>
        <source>Print the shift&apos;s totals.</source>
        <translation>Напечатать итоги смены.</translation>
    </message>
    <message>
        <source>Close the shift and print its report.</source>
        <translation>Закрыть смену и напечатать отчёт.</translation>
    </message>
    <message>
        <source>Print the report on the state of settlements.</source>
        <translation>Напечатать отчёт о состоянии расчётов.</translation>
    </message>
    <message>
        <source>The shift&apos;s sums by payment kind, cash in and cash out.</source>
        <translation>Суммы смены по видам оплаты, внесения и выплаты.</translation>
    </message>
    <message>
        <source>The registers for the start or the end of a shift, by position.</source>
        <translation>Регистры на начало или конец смены, по порядку.</translation>
    </message>
    <message>
        <source>State of the fiscal drive and of its exchange with the OFD.</source>
        <translation>Состояние фискального накопителя и его обмена с ОФД.</translation>
    </message>
    <message>
        <source>The exchange with the operator of fiscal data.</source>
        <translation>Обмен с оператором фискальных данных.</translation>
    </message>
    <message>
        <source>Print the fiscal drive&apos;s document of that number.</source>
        <translation>Напечатать документ фискального накопителя с этим номером.</translation>
    </message>
    <message>
        <source>Print the fiscal drive&apos;s last document.</source>
        <translation>Напечатать последний документ фискального накопителя.</translation>
    </message>
    <message>
        <source>Register anew with the tax systems of the list.</source>
        <translation>Перерегистрировать с системами налогообложения из списка.</translation>
    </message>
    <message>
        <source>Issue the receipt of a JSON file (- for standard input).</source>
        <translation>Пробить чек из файла JSON (- для стандартного ввода).</translation>
    </message>
    <message>
        <source>Issue the return receipt of a JSON file (- for standard input).</source>
        <translation>Пробить чек возврата из файла JSON (- для стандартного ввода).</translation>
    </message>
    <message>
        <source>Tell all that would refuse the receipts of JSON files, and all warnings; no register.</source>
        <translation>Всё, из-за чего чеки из файлов JSON не пройдут, и все предупреждения; касса не нужна.</translation>
    </message>
    <message>
        <source>The receipt of a JSON file as a register prints it; needs no register.</source>
        <translation>Чек из файла JSON таким, каким его печатает касса; касса не нужна.</translation>
    </message>
    <message>
        <source>Put cash into the drawer.</source>
        <translation>Внести наличные в денежный ящик.</translation>
    </message>
    <message>
        <source>Take cash out of the drawer.</source>
        <translation>Выплатить наличные из денежного ящика.</translation>
    </message>
    <message>
        <source>Print the lines of a text file as a document of no fiscal meaning.</source>
        <translation>Напечатать строки текстового файла нефискальным документом.</translation>
    </message>
    <message>
        <source>Cancel the open document (HEX).</source>
        <translation>Отменить открытый документ (HEX).</translation>
    </message>
    <message>
        <source>Open the cash drawer, or tell whether it is open.</source>
        <translation>Открыть денежный ящик или сообщить, открыт ли он.</translation>
    </message>
    <message>
        <source>The register&apos;s clock; set takes 2024-12-31T23:59:59 or the time now.</source>
        <translation>Часы кассы; set принимает 2024-12-31T23:59:59 или ставит текущее время.</translation>
    </message>
    <message>
        <source>The register&apos;s settings; NAME is 6.0 or a caption, over XML section.subsection.parameter.</source>
        <translation>Настройки кассы; NAME — 6.0 или название, по XML раздел.подраздел.параметр.</translation>
    </message>
    <message>
        <source>Program the header lines of the receipts, 4 at most.</source>
        <translation>Записать строки заголовка чеков, не более 4.</translation>
    </message>
    <message>
        <source>Program the advertising text at the end of the receipts (HEX).</source>
        <translation>Записать рекламный текст в конце чеков (HEX).</translation>
    </message>
    <message>
        <source>Program the header picture, or remove it (HEX).</source>
        <translation>Записать картинку заголовка или убрать её (HEX).</translation>
    </message>
    <message>
        <source>What the configuration says of the registers, and where it stands; needs no register.</source>
        <translation>Что и где написано в конфигурации о кассах; касса не нужна.</translation>
    </message>
    <message>
        <source>What the shell needs to complete command lines of frctl.</source>
        <translation>Что нужно оболочке для дополнения команд frctl.</translation>
    </message>
    <message>
        <source>The words that a receipt may have: taxes, units ...; fields tells the fields.</source>
        <translation>Слова, допустимые в чеке: ставки НДС, единицы ...; fields — поля.</translation>
    </message>
    <message>
        <source>The JSON schema of receipts, or of what --json prints.</source>
        <translation>Схема JSON чеков или того, что печатает --json.</translation>
    </message>
    <message>
        <source>Show what --trace has written, tell how two traces differ, play one (--as), or take it to Wireshark.</source>
        <translation>Показать записанное --trace, сравнить две трассы, проиграть трассу (--as) или передать её в Wireshark.</translation>
    </message>
    <message>
        <source>Check the marking code of one piece to be sold.</source>
        <translation>Проверить код маркировки одной продаваемой штуки.</translation>
    </message>
    <message>
        <source> and </source>
        <translation> и </translation>
    </message>
    <message>
        <source>--%1 goes with %2</source>
        <translation>--%1 — для команд: %2</translation>
    </message>
    <message>
        <source>%1 cannot be done over XML</source>
        <translation>по XML невозможно: %1</translation>
    </message>
    <message>
        <source>no command &quot;%1&quot;%2</source>
        <translation>нет команды &quot;%1&quot;%2</translation>
    </message>
    <message>
        <source>no command</source>
        <translation>команда не указана</translation>
    </message>
    <message>
        <source>--config needs the name of a register in it: --register</source>
        <translation>к --config нужно имя кассы в этом файле: --register</translation>
    </message>
    <message>
        <source>%1 takes %2</source>
        <translation>аргументы команды %1: %2</translation>
    </message>
    <message>
        <source>no arguments</source>
        <translation>нет</translation>
    </message>
    <message>
        <source>unknown option %1%2</source>
        <translation>неизвестный параметр %1%2</translation>
    </message>
    <message>
        <source>--%1 takes no value</source>
        <translation>--%1 не принимает значения</translation>
    </message>
    <message>
        <source>--%1 needs %2</source>
        <translation>к --%1 нужно значение: %2</translation>
    </message>
    <message>
        <source>interrupted</source>
        <translation>прервано</translation>
    </message>
    <message>
        <source>completion: &quot;%1&quot; is neither bash nor zsh</source>
        <translation>completion: &quot;%1&quot; — не bash и не zsh</translation>
    </message>
    <message>
        <source>command line</source>
        <translation>командная строка</translation>
    </message>
    <message>
        <source> (not there)</source>
        <translation> (нет)</translation>
    </message>
    <message>
        <source>config takes path, list or show [NAME]</source>
        <translation>аргументы команды config: path, list или show [NAME]</translation>
    </message>
    <message>
        <source>%1: no such key%2; there are %3</source>
        <translation>%1: нет такого ключа%2; есть %3</translation>
    </message>
    <message>
        <source>%1: &quot;%2&quot; is neither yes nor no</source>
        <translation>%1: &quot;%2&quot; — не yes и не no</translation>
    </message>
    <message>
        <source>--register: there is no [%1] in %2%3; %4</source>
        <translation>--register: раздела [%1] нет в %2%3; %4</translation>
    </message>
    <message>
        <source> or </source>
        <translation> или </translation>
    </message>
    <message>
        <source>no register is configured</source>
        <translation>ни одна касса не настроена</translation>
    </message>
    <message>
        <source>there are </source>
        <translation>есть </translation>
    </message>
    <message>
        <source>cash in: %1, sum %2</source>
        <translation>внесений: %1, сумма %2</translation>
    </message>
    <message>
        <source>cash out: %1, sum %2</source>
        <translation>выплат: %1, сумма %2</translation>
    </message>
    <message>
        <source>registers: &quot;%1&quot; is neither begin nor end</source>
        <translation>registers: &quot;%1&quot; — не begin и не end</translation>
    </message>
    <message>
        <source>PORT</source>
        <translation>ПОРТ</translation>
    </message>
    <message>
        <source>MAKER</source>
        <translation>ИЗГОТОВИТЕЛЬ</translation>
    </message>
    <message>
        <source>DEVICE</source>
        <translation>УСТРОЙСТВО</translation>
    </message>
    <message>
        <source>SERIAL</source>
        <translation>НОМЕР</translation>
    </message>
    <message>
        <source>HELD BY</source>
        <translation>ЗАНЯТ</translation>
    </message>
    <message>
        <source>NAME TO KEEP</source>
        <translation>ПОСТОЯННОЕ ИМЯ</translation>
    </message>
    <message>
        <source>To go on:</source>
        <translation>Дальше:</translation>
    </message>
    <message>
        <source>For ~/.config/frspf/frctl.ini or /etc/frspf/frctl.ini:</source>
        <translation>Для ~/.config/frspf/frctl.ini или /etc/frspf/frctl.ini:</translation>
    </message>
    <message>
        <source>%1: trying a second connection</source>
        <translation>%1: проверка второго подключения</translation>
    </message>
    <message>
        <source>what it makes of a second connection could not be found out</source>
        <translation>как касса принимает второе подключение, выяснить не удалось</translation>
    </message>
    <message>
        <source>a new connection ends the former one</source>
        <translation>новое подключение обрывает прежнее</translation>
    </message>
    <message>
        <source>a second connection is not served while there is one</source>
        <translation>второе подключение не обслуживается, пока есть первое</translation>
    </message>
    <message>
        <source>a second connection is served beside the first one</source>
        <translation>второе подключение обслуживается наряду с первым</translation>
    </message>
    <message>
        <source>no serial ports; a pty or tcp:host:port can be named</source>
        <translation>последовательных портов нет; можно назвать pty или tcp:host:port</translation>
    </message>
    <message>
        <source>Nothing was asked. frctl detect PORT... asks those ports, --all all of them: bytes may do harm to scales, card terminals and a UPS.</source>
        <translation>Порты не опрашивались. frctl detect PORT... опросит названные, --all — все: весам, терминалам и ИБП лишние байты могут повредить.</translation>
    </message>
    <message>
        <source>detect takes ports, or --all, not both</source>
        <translation>команде detect нужны порты или --all, но не вместе</translation>
    </message>
    <message>
        <source>detect: &quot;%1&quot; names no port</source>
        <translation>detect: &quot;%1&quot; — не имя порта</translation>
    </message>
    <message>
        <source>%1: %2, serial number %3, firmware %4%5, over %6</source>
        <translation>%1: %2, заводской номер %3, прошивка %4%5, протокол %6</translation>
    </message>
    <message>
        <source>, INN </source>
        <translation>, ИНН </translation>
    </message>
    <message>
        <source>%1 (process %2)</source>
        <translation>%1 (процесс %2)</translation>
    </message>
    <message>
        <source>%1: not asked, %2 works it</source>
        <translation>%1: не опрашивался, с ним работает %2</translation>
    </message>
    <message>
        <source>%1: no register over %2: %3; %4</source>
        <translation>%1: по %2 кассы нет: %3; %4</translation>
    </message>
    <message>
        <source>--port: &quot;%1&quot; names no port</source>
        <translation>--port: &quot;%1&quot; — не имя порта</translation>
    </message>
    <message>
        <source>, document %1</source>
        <translation>, документ %1</translation>
    </message>
    <message>
        <source>marking code %1: %2</source>
        <translation>код маркировки %1: %2</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>да</translation>
    </message>
    <message>
        <source>no</source>
        <translation>нет</translation>
    </message>
    <message>
        <source>receipt issued: total %1, paid %2, change %3</source>
        <translation>чек пробит: итог %1, оплачено %2, сдача %3</translation>
    </message>
    <message>
        <source>is at its end</source>
        <translation>исчерпан</translation>
    </message>
    <message>
        <source>is full</source>
        <translation>заполнен</translation>
    </message>
    <message>
        <source>ends soon</source>
        <translation>скоро кончится</translation>
    </message>
    <message>
        <source>, until </source>
        <translation>, до </translation>
    </message>
    <message>
        <source>%1: not in its fiscal mode (phase %2)</source>
        <translation>%1: не в фискальном режиме (фаза %2)</translation>
    </message>
    <message>
        <source>it signs nothing: register it, or change it</source>
        <translation>он ничего не подписывает: зарегистрируйте или замените его</translation>
    </message>
    <message>
        <source>have the drive changed</source>
        <translation>закажите замену накопителя</translation>
    </message>
    <message>
        <source>from number %1 of %2</source>
        <translation>с номера %1 от %2</translation>
    </message>
    <message>
        <source>nothing waits for the OFD</source>
        <translation>в очереди к ОФД ничего нет</translation>
    </message>
    <message>
        <source>, for too long</source>
        <translation>, слишком давно</translation>
    </message>
    <message>
        <source>see to the register&apos;s network and the OFD contract: after 30 days it sells nothing</source>
        <translation>проверьте сеть кассы и договор с ОФД: через 30 дней продажи остановятся</translation>
    </message>
    <message>
        <source>--tax-systems: &quot;%1&quot; is none of %2</source>
        <translation>--tax-systems: &quot;%1&quot;; допустимо одно из: %2</translation>
    </message>
    <message>
        <source>registered: </source>
        <translation>зарегистрировано: </translation>
    </message>
    <message>
        <source>registration needs --tax-systems</source>
        <translation>команде registration нужен --tax-systems</translation>
    </message>
    <message>
        <source>ok</source>
        <translation>норма</translation>
    </message>
    <message>
        <source>WRONG</source>
        <translation>СБОЙ</translation>
    </message>
    <message>
        <source>Its options</source>
        <translation>Параметры команды</translation>
    </message>
    <message>
        <source>The register</source>
        <translation>Касса</translation>
    </message>
    <message>
        <source>Options of all commands</source>
        <translation>Параметры всех команд</translation>
    </message>
    <message>
        <source>
Exit status:
</source>
        <translation>
Код завершения:
</translation>
    </message>
    <message>
        <source>done</source>
        <translation>сделано</translation>
    </message>
    <message>
        <source>failed, or the output was lost</source>
        <translation>неудача или вывод потерян</translation>
    </message>
    <message>
        <source>the register or its line failed or refused, or the output was lost</source>
        <translation>сбой или отказ кассы или линии либо вывод потерян</translation>
    </message>
    <message>
        <source>wrong usage or a wrong file; nothing was sent</source>
        <translation>неверный вызов или неверный файл; ничего не отправлено</translation>
    </message>
    <message>
        <source>the close failed, but the document was issued: do not repeat it</source>
        <translation>закрытие не удалось, но документ пробит: не повторяйте</translation>
    </message>
    <message>
        <source>the close failed and the document was not issued: it may be repeated</source>
        <translation>закрытие не удалось, документ не пробит: можно повторить</translation>
    </message>
    <message>
        <source>the close failed, unknown whether it was issued: look at the register first</source>
        <translation>закрытие не удалось, пробит ли документ, неизвестно: сначала посмотрите на кассу</translation>
    </message>
    <message>
        <source>
Works a fiscal register through its driver plugin.

Commands:
</source>
        <translation>
Работает с фискальным регистратором через плагин драйвера.

Команды:
</translation>
    </message>
    <message>
        <source>Options of the commands that work a register</source>
        <translation>Параметры команд, которые работают с кассой</translation>
    </message>
    <message>
        <source>Options of the commands that make a document</source>
        <translation>Параметры команд, которые пробивают документ</translation>
    </message>
    <message>
        <source>
Options stand anywhere. frctl help COMMAND tells the options of that command and an example.</source>
        <translation>
Место параметров любое. frctl help COMMAND покажет параметры этой команды и пример.</translation>
    </message>
    <message>
        <source>
Example:
  frctl %1%2</source>
        <translation>
Пример:
  frctl %1%2</translation>
    </message>
    <message>
        <source>Usage: frctl [OPTION]... </source>
        <translation>Вызов: frctl [ПАРАМЕТР]... </translation>
    </message>
    <message>
        <source>COMMAND [ARGUMENT]...</source>
        <translation>КОМАНДА [АРГУМЕНТ]...</translation>
    </message>
    <message>
        <source>: document %1</source>
        <translation>: документ %1</translation>
    </message>
    <message>
        <source>receipt issued before</source>
        <translation>чек уже пробит раньше</translation>
    </message>
    <message>
        <source>the sale %1 was broken off earlier; look at the register&apos;s tape, then frctl journal resolve %1</source>
        <translation>продажа %1 раньше оборвалась; посмотрите ленту кассы, затем frctl journal resolve %1</translation>
    </message>
    <message>
        <source>the sale %1 was begun on fiscal drive %2</source>
        <translation>продажа %1 начата на фискальном накопителе %2</translation>
    </message>
    <message>
        <source>(write only)</source>
        <translation>(только запись)</translation>
    </message>
    <message>
        <source>plugin: %1</source>
        <translation>плагин: %1</translation>
    </message>
    <message>
        <source>interface: %1</source>
        <translation>интерфейс: %1</translation>
    </message>
    <message>
        <source>name: %1, type: %2</source>
        <translation>имя: %1, тип: %2</translation>
    </message>
    <message>
        <source>properties of %1:</source>
        <translation>свойства %1:</translation>
    </message>
    <message>
        <source>class info:</source>
        <translation>сведения о классе:</translation>
    </message>
    <message>
        <source>has more than %1 MiB</source>
        <translation>больше %1 МиБ</translation>
    </message>
    <message>
        <source>%1, %2: the register has %3, this journal %4: the difference of %5 is of receipts that others made</source>
        <translation>%1, %2: в кассе %3, в этом журнале %4: разница %5 — от чеков, пробитых другими</translation>
    </message>
    <message>
        <source>the journal is sound</source>
        <translation>журнал исправен</translation>
    </message>
    <message>
        <source>the shift is closed: no counters to compare</source>
        <translation>смена закрыта: сравнивать счётчики не с чем</translation>
    </message>
    <message>
        <source>the counters of the shift have the journal&apos;s receipts and no others</source>
        <translation>в счётчиках смены — чеки журнала и никаких других</translation>
    </message>
    <message>
        <source>--%1: &quot;%2&quot; is no day as 2024-12-31, nor a time as 2024-12-31T23:59:59</source>
        <translation>--%1: &quot;%2&quot; — не дата вида 2024-12-31 и не время вида 2024-12-31T23:59:59</translation>
    </message>
    <message>
        <source>--state: &quot;%1&quot; is none of queued, running, issued, notIssued, unknown</source>
        <translation>--state: &quot;%1&quot;; допустимо одно из: queued, running, issued, notIssued, unknown</translation>
    </message>
    <message>
        <source>the journal has no document %1</source>
        <translation>в журнале нет документа %1</translation>
    </message>
    <message>
        <source>journal resolve ID issued needs --document N, the number on the receipt</source>
        <translation>для journal resolve ID issued нужен --document N, номер на чеке</translation>
    </message>
    <message>
        <source>journal resolve takes ID issued or ID not-issued</source>
        <translation>аргументы journal resolve: ID issued или ID not-issued</translation>
    </message>
    <message>
        <source>--document contradicts not-issued: a document with a number is issued</source>
        <translation>--document противоречит not-issued: документ с номером пробит</translation>
    </message>
    <message>
        <source>journal resolve ID not-issued needs --note TEXT, what was seen</source>
        <translation>для journal resolve ID not-issued нужен --note TEXT: что увидели</translation>
    </message>
    <message>
        <source>copied to </source>
        <translation>скопировано в </translation>
    </message>
    <message>
        <source>journal anonymise needs --before DATE</source>
        <translation>для journal anonymise нужен --before DATE</translation>
    </message>
    <message>
        <source>%1 documents anonymised</source>
        <translation>обезличено документов: %1</translation>
    </message>
    <message>
        <source>fiscal drive %1: all documents up to %2 are accepted</source>
        <translation>фискальный накопитель %1: приняты все документы по %2</translation>
    </message>
    <message>
        <source>not settled</source>
        <translation>исход не установлен</translation>
    </message>
    <message>
        <source>attempt %1: %2, %3</source>
        <translation>попытка %1: %2, %3</translation>
    </message>
    <message>
        <source>  document %1</source>
        <translation>  документ %1</translation>
    </message>
    <message>
        <source>  drive </source>
        <translation>  накопитель </translation>
    </message>
    <message>
        <source>resolved by %1: %2</source>
        <translation>установил %1: %2</translation>
    </message>
    <message>
        <source>%1 needs a cashier: --cashier, or &quot;operator&quot; in the receipt</source>
        <translation>команде %1 нужен кассир: --cashier или &quot;operator&quot; в чеке</translation>
    </message>
    <message>
        <source>the trace %1 ends here: %2</source>
        <translation>трасса %1 на этом обрывается: %2</translation>
    </message>
    <message>
        <source>install frspf-plugin, or name its folder: --plugin, FRSPF_PLUGIN_PATH</source>
        <translation>установите frspf-plugin или укажите его каталог: --plugin, FRSPF_PLUGIN_PATH</translation>
    </message>
    <message>
        <source>no serial port here</source>
        <translation>последовательных портов нет</translation>
    </message>
    <message>
        <source>there is no </source>
        <translation>нет </translation>
    </message>
    <message>
        <source>plug it in; frctl detect lists the ports</source>
        <translation>подключите; список портов покажет frctl detect</translation>
    </message>
    <message>
        <source>this user may open what is there</source>
        <translation>этот пользователь может открыть все порты</translation>
    </message>
    <message>
        <source>this user may not open </source>
        <translation>этот пользователь не может открыть </translation>
    </message>
    <message>
        <source>sudo usermod -aG %1 &quot;$USER&quot;, then log in anew</source>
        <translation>sudo usermod -aG %1 &quot;$USER&quot;, затем войдите заново</translation>
    </message>
    <message>
        <source>no other program of this user has a port open</source>
        <translation>у других программ этого пользователя портов не открыто</translation>
    </message>
    <message>
        <source>end that program, or use --wait</source>
        <translation>завершите ту программу или возьмите --wait</translation>
    </message>
    <message>
        <source>does not run</source>
        <translation>не запущена</translation>
    </message>
    <message>
        <source>runs, and leaves these ports alone</source>
        <translation>запущена, эти порты не трогает</translation>
    </message>
    <message>
        <source>it sends to </source>
        <translation>она шлёт байты в </translation>
    </message>
    <message>
        <source>sudo systemctl disable --now ModemManager, or name the adapter in the udev rule of frspf-tools</source>
        <translation>sudo systemctl disable --now ModemManager или впишите адаптер в правило udev пакета frspf-tools</translation>
    </message>
    <message>
        <source>runs, and there is no USB port here</source>
        <translation>запущена, портов USB нет</translation>
    </message>
    <message>
        <source>it takes USB adapters for braille displays, and their ports vanish</source>
        <translation>она принимает адаптеры USB за дисплеи Брайля, и их порты пропадают</translation>
    </message>
    <message>
        <source>no USB adapter is powered down</source>
        <translation>питание адаптеров USB не отключается</translation>
    </message>
    <message>
        <source>the system may power down </source>
        <translation>система может отключить питание </translation>
    </message>
    <message>
        <source>echo on | sudo tee %1, or name the adapter in the udev rule of frspf-tools</source>
        <translation>echo on | sudo tee %1 или впишите адаптер в правило udev пакета frspf-tools</translation>
    </message>
    <message>
        <source>none yet</source>
        <translation>ещё нет</translation>
    </message>
    <message>
        <source> is sound</source>
        <translation> исправен</translation>
    </message>
    <message>
        <source>sell nothing more with it: take the last copy of frctl journal backup</source>
        <translation>больше с ним не продавайте: возьмите последнюю копию frctl journal backup</translation>
    </message>
    <message>
        <source>not printed</source>
        <translation>не печатается</translation>
    </message>
    <message>
        <source>error.kind of an answer</source>
        <translation>error.kind ответа</translation>
    </message>
    <message>
        <source>all fields of a receipt, and how the protocols carry them</source>
        <translation>все поля чека и как их передают протоколы</translation>
    </message>
    <message>
        <source>names: &quot;%1&quot; is no list; frctl names tells which there are</source>
        <translation>names: списка &quot;%1&quot; нет; все покажет frctl names</translation>
    </message>
    <message>
        <source>--expect-inn: over XML the register is known by --expect-serial alone</source>
        <translation>--expect-inn: по XML касса узнаётся только по --expect-serial</translation>
    </message>
    <message>
        <source>--trace-full goes with --trace</source>
        <translation>--trace-full — только вместе с --trace</translation>
    </message>
    <message>
        <source>--strict contradicts another --marks: with it marking codes are judged strictly</source>
        <translation>--strict противоречит другому --marks: с ним коды маркировки проверяются строго</translation>
    </message>
    <message>
        <source>%1 needs a cashier: --cashier</source>
        <translation>команде %1 нужен кассир: --cashier</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number from 0 to %2</source>
        <translation>&quot;%1&quot; — не число от 0 до %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is none of %2</source>
        <translation>&quot;%1&quot;; допустимо одно из: %2</translation>
    </message>
    <message>
        <source>is empty</source>
        <translation>пусто</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has not 10 or 12 digits</source>
        <translation>&quot;%1&quot;: нужно 10 или 12 цифр</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is neither HEX nor XML</source>
        <translation>&quot;%1&quot; — не HEX и не XML</translation>
    </message>
    <message>
        <source>must have at most %1 characters, not %2</source>
        <translation>допустимо не более %1 символов, здесь %2</translation>
    </message>
    <message>
        <source>has nothing but blanks</source>
        <translation>одни пробелы</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no tax number of 10 or 12 digits, the last of which are right for the others</source>
        <translation>&quot;%1&quot; — не ИНН из 10 или 12 цифр с верными контрольными</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is neither yes nor no</source>
        <translation>&quot;%1&quot; — не yes и не no</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not BIT=on or BIT=off</source>
        <translation>&quot;%1&quot; — не BIT=on и не BIT=off</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is neither 44 nor 48</source>
        <translation>&quot;%1&quot; — не 44 и не 48</translation>
    </message>
    <message>
        <source>wants a file</source>
        <translation>нужен файл</translation>
    </message>
    <message>
        <source>The section of the configuration that tells port, protocol and the rest.</source>
        <translation>Раздел конфигурации, где заданы порт, протокол и остальное.</translation>
    </message>
    <message>
        <source>The configuration (~/.config/frspf/frctl.ini, then /etc/frspf/frctl.ini).</source>
        <translation>Конфигурация (~/.config/frspf/frctl.ini, затем /etc/frspf/frctl.ini).</translation>
    </message>
    <message>
        <source>The register&apos;s own number; another register is an error, and gets nothing.</source>
        <translation>Заводской номер кассы; другая касса — ошибка, ей ничего не отправляется.</translation>
    </message>
    <message>
        <source>The tax number that it is registered with; compared over HEX.</source>
        <translation>ИНН, на который она зарегистрирована; сверяется по HEX.</translation>
    </message>
    <message>
        <source>Version of the control protocol that XML requests carry.</source>
        <translation>Версия протокола управления в запросах XML.</translation>
    </message>
    <message>
        <source>The driver plugin, or a folder to look for it; may be repeated.</source>
        <translation>Плагин драйвера или каталог, где его искать; можно повторять.</translation>
    </message>
    <message>
        <source>Whether only programs of this machine that take its lock work the register (yes; no for tcp:).</source>
        <translation>Работают ли с кассой только программы этой машины, берущие её блокировку (yes; для tcp: — no).</translation>
    </message>
    <message>
        <source>Number of the register, 0 to 19 (0).</source>
        <translation>Номер кассы, от 0 до 19 (0).</translation>
    </message>
    <message>
        <source>Keep to the last good speed when a connection is repeated.</source>
        <translation>При повторном соединении держаться последней удачной скорости.</translation>
    </message>
    <message>
        <source>Overrule a driver option, BIT as 0x10 or 16; may be repeated.</source>
        <translation>Переопределить опцию драйвера, BIT — 0x10 или 16; можно повторять.</translation>
    </message>
    <message>
        <source>The journal of documents (/var/lib/frspf/sales.sqlite, or in $XDG_STATE_HOME/frspf).</source>
        <translation>Журнал документов (/var/lib/frspf/sales.sqlite или в $XDG_STATE_HOME/frspf).</translation>
    </message>
    <message>
        <source>The cashier; goes before the one that a receipt names.</source>
        <translation>Кассир; важнее названного в чеке.</translation>
    </message>
    <message>
        <source>The cashier&apos;s tax number.</source>
        <translation>ИНН кассира.</translation>
    </message>
    <message>
        <source>osn, usnIncome, usnIncomeOutcome, envd, esn, patent, with commas between.</source>
        <translation>osn, usnIncome, usnIncomeOutcome, envd, esn, patent через запятую.</translation>
    </message>
    <message>
        <source>The sale&apos;s name; the same name again is never sold twice.</source>
        <translation>Имя продажи; с тем же именем дважды не пробивается.</translation>
    </message>
    <message>
        <source>For list and export: queued, running, issued, notIssued or unknown.</source>
        <translation>Для list и export: queued, running, issued, notIssued или unknown.</translation>
    </message>
    <message>
        <source>For list and export: accepted on that day or later.</source>
        <translation>Для list и export: принятые в этот день или позже.</translation>
    </message>
    <message>
        <source>For anonymise: accepted before that day.</source>
        <translation>Для anonymise: принятые до этого дня.</translation>
    </message>
    <message>
        <source>For resolve: the number on the receipt.</source>
        <translation>Для resolve: номер на чеке.</translation>
    </message>
    <message>
        <source>For resolve and accept: what was seen.</source>
        <translation>Для resolve и accept: что увидели.</translation>
    </message>
    <message>
        <source>Characters on a line of the paper (44).</source>
        <translation>Символов в строке ленты (44).</translation>
    </message>
    <message>
        <source>A picture, a pixel a dot, instead of text.</source>
        <translation>Картинка вместо текста, пиксель на точку.</translation>
    </message>
    <message>
        <source>The same as PDF.</source>
        <translation>То же в PDF.</translation>
    </message>
    <message>
        <source>The same as SVG.</source>
        <translation>То же в SVG.</translation>
    </message>
    <message>
        <source>A field that the protocol does not carry is left out; may be repeated.</source>
        <translation>Отбросить поле, которого протокол не передаёт; можно повторять.</translation>
    </message>
    <message>
        <source>Two positions where a discount leaves no whole kopecks a piece.</source>
        <translation>Две позиции там, где скидка не делится на штуки в целых копейках.</translation>
    </message>
    <message>
        <source>Marking codes that were not checked on line are errors too, or none is (warn).</source>
        <translation>Коды маркировки без онлайн-проверки — тоже ошибки, или ошибок нет вовсе (warn).</translation>
    </message>
    <message>
        <source>Every serial port is asked; bytes may do harm to what is no register.</source>
        <translation>Опросить все последовательные порты; тому, что не касса, байты могут повредить.</translation>
    </message>
    <message>
        <source>Remove the picture.</source>
        <translation>Убрать картинку.</translation>
    </message>
    <message>
        <source>Warnings are errors, and --marks strict.</source>
        <translation>Предупреждения — ошибки, и --marks strict.</translation>
    </message>
    <message>
        <source>Add what goes over the line to FILE, a line a frame; - is standard error.</source>
        <translation>Дописывать в FILE всё, что идёт по линии, по строке на кадр; - для стандартного потока ошибок.</translation>
    </message>
    <message>
        <source>For replay: whose side is played.</source>
        <translation>Для replay: чья сторона проигрывается.</translation>
    </message>
    <message>
        <source>For replay --as host: the register&apos;s password over HEX (QZXW).</source>
        <translation>Для replay --as host: пароль кассы по HEX (QZXW).</translation>
    </message>
    <message>
        <source>Language of the texts (that of LC_ALL, LC_MESSAGES or LANG).</source>
        <translation>Язык текстов (из LC_ALL, LC_MESSAGES или LANG).</translation>
    </message>
    <message>
        <source>Print one JSON object.</source>
        <translation>Напечатать один объект JSON.</translation>
    </message>
    <message>
        <source>Show this help.</source>
        <translation>Показать эту справку.</translation>
    </message>
    <message>
        <source>Show the version.</source>
        <translation>Показать версию.</translation>
    </message>
    <message>
        <source>the program that draws pictures, frspf-draw, is not installed</source>
        <translation>программа, рисующая картинки, frspf-draw, не установлена</translation>
    </message>
    <message>
        <source>the page is too long for a %1; --pdf and --svg take any</source>
        <translation>страница слишком длинна для %1; --pdf и --svg вместят любую</translation>
    </message>
    <message>
        <source>%1: exit status %2</source>
        <translation>%1: код завершения %2</translation>
    </message>
    <message>
        <source>no parameter &quot;%1&quot;</source>
        <translation>нет параметра &quot;%1&quot;</translation>
    </message>
    <message>
        <source>the register does not tell %1</source>
        <translation>касса не сообщает %1</translation>
    </message>
    <message>
        <source>&quot;%1&quot; names %2 parameters, %3 and %4 among them</source>
        <translation>имени &quot;%1&quot; отвечает параметров: %2, среди них %3 и %4</translation>
    </message>
    <message>
        <source>params set: %1 is the password of the link, and this driver knows only that of the factory: with another one it does not reach the register any more; --force writes it all the same</source>
        <translation>params set: %1 — пароль связи, а драйвер знает только заводской: с другим до кассы уже не достучаться; --force запишет его всё равно</translation>
    </message>
    <message>
        <source>%1 parameters written</source>
        <translation>записано параметров: %1</translation>
    </message>
    <message>
        <source>defaults written</source>
        <translation>записаны значения по умолчанию</translation>
    </message>
    <message>
        <source>params set: &quot;%1&quot; is not NAME=VALUE</source>
        <translation>params set: &quot;%1&quot; — не NAME=VALUE</translation>
    </message>
    <message>
        <source>params set: &quot;%1&quot; is not section.subsection.parameter</source>
        <translation>params set: &quot;%1&quot; — не раздел.подраздел.параметр</translation>
    </message>
    <message>
        <source>--force goes with params set</source>
        <translation>--force — только с params set</translation>
    </message>
    <message>
        <source>params takes list, get NAME..., set NAME=VALUE... or defaults</source>
        <translation>аргументы команды params: list, get NAME..., set NAME=VALUE... или defaults</translation>
    </message>
    <message>
        <source>%1%2 was refused; those before it are written</source>
        <translation>%1%2: касса отказала; записаны только стоящие раньше</translation>
    </message>
    <message>
        <source>%1 was refused; nothing is written</source>
        <translation>%1: касса отказала; ничего не записано</translation>
    </message>
    <message>
        <source>preview makes one of --png, --pdf and --svg at a time</source>
        <translation>preview делает за раз одно из --png, --pdf и --svg</translation>
    </message>
    <message>
        <source>receipt drawn: </source>
        <translation>чек нарисован: </translation>
    </message>
    <message>
        <source>a register prints nothing of it; shown is what it would print</source>
        <translation>касса этого не печатает; показано, что она напечатала бы</translation>
    </message>
    <message>
        <source>the register refuses it: </source>
        <translation>касса отказывает: </translation>
    </message>
    <message>
        <source>%1: has %2 lines, the register takes %3</source>
        <translation>%1: строк %2, касса принимает %3</translation>
    </message>
    <message>
        <source>the register refused the lines</source>
        <translation>касса не приняла строки</translation>
    </message>
    <message>
        <source>lines programmed</source>
        <translation>строки записаны</translation>
    </message>
    <message>
        <source>header picture removed</source>
        <translation>картинка заголовка убрана</translation>
    </message>
    <message>
        <source>logo takes a file or --clear</source>
        <translation>команде logo нужен файл или --clear</translation>
    </message>
    <message>
        <source>%1 is no picture, or the register refused it</source>
        <translation>%1 — не картинка, или касса её не приняла</translation>
    </message>
    <message>
        <source>header picture programmed</source>
        <translation>картинка заголовка записана</translation>
    </message>
    <message>
        <source>is no return; use the command sell</source>
        <translation>не возврат; для него команда sell</translation>
    </message>
    <message>
        <source>is a return; use the command refund</source>
        <translation>возврат; для него команда refund</translation>
    </message>
    <message>
        <source>cash in: %1</source>
        <translation>внесено: %1</translation>
    </message>
    <message>
        <source>cash out: %1</source>
        <translation>выплачено: %1</translation>
    </message>
    <message>
        <source>is not a sum as 100.50</source>
        <translation>не сумма вида 100.50</translation>
    </message>
    <message>
        <source>is not above zero; cash-in puts cash into the drawer, cash-out takes it out</source>
        <translation>не больше нуля; cash-in вносит наличные в ящик, cash-out выплачивает из него</translation>
    </message>
    <message>
        <source>is more than a register takes</source>
        <translation>больше, чем принимает касса</translation>
    </message>
    <message>
        <source>has parts of a kopeck</source>
        <translation>есть доли копейки</translation>
    </message>
    <message>
        <source>%1 lines printed</source>
        <translation>напечатано строк: %1</translation>
    </message>
    <message>
        <source>see which one is right; frctl time set --force gives the register this one, with the shift closed</source>
        <translation>выясните, какое верно; frctl time set --force при закрытой смене поставит кассе это</translation>
    </message>
    <message>
        <source>open; over XML it is not told for how long</source>
        <translation>открыта; как давно, по XML не узнать</translation>
    </message>
    <message>
        <source>open for more than 24 hours: the register sells nothing</source>
        <translation>открыта более 24 часов: касса не продаёт</translation>
    </message>
    <message>
        <source>open for less than 24 hours</source>
        <translation>открыта менее 24 часов</translation>
    </message>
    <message>
        <source>%1, serial number %2, over %3</source>
        <translation>%1, заводской номер %2, протокол %3</translation>
    </message>
    <message>
        <source>neither protocol tells it</source>
        <translation>протоколы этого не сообщают</translation>
    </message>
    <message>
        <source>it answers over %1: --protocol %1</source>
        <translation>отвечает по %1: --protocol %1</translation>
    </message>
    <message>
        <source>not asked</source>
        <translation>не опрашивалось</translation>
    </message>
    <message>
        <source>none named: --port, or --register</source>
        <translation>не указана: --port или --register</translation>
    </message>
    <message>
        <source>see to its port first</source>
        <translation>сначала разберитесь с портом</translation>
    </message>
    <message>
        <source>see which cable is in which port; frctl detect tells who is where</source>
        <translation>проверьте, какой кабель в каком порту; кто где, покажет frctl detect</translation>
    </message>
    <message>
        <source>see to plugin and port first</source>
        <translation>сначала разберитесь с плагином и портом</translation>
    </message>
    <message>
        <source>frctl status tells its state</source>
        <translation>её состояние покажет frctl status</translation>
    </message>
    <message>
        <source>frctl doctor tells who has the port, and whether this user may open it</source>
        <translation>кто занял порт и может ли этот пользователь его открыть, покажет frctl doctor</translation>
    </message>
    <message>
        <source>bytes came with another speed or parity (%1 framing, %2 parity errors): set the register to 115200 baud, 8 data bits, no parity</source>
        <translation>байты пришли на другой скорости или с другой чётностью (ошибок кадра %1, чётности %2): поставьте кассе 115200 бод, 8 бит данных, без чётности</translation>
    </message>
    <message>
        <source>%1 bytes came that are no answer: the other protocol, or another device</source>
        <translation>пришло байтов: %1, это не ответ: другой протокол или другое устройство</translation>
    </message>
    <message>
        <source>silence: no power, the cable, the other protocol, or another device</source>
        <translation>тишина: нет питания, кабель, другой протокол или другое устройство</translation>
    </message>
    <message>
        <source>no answer from %1 over %2 yet, still asking; likely causes: the register is set to the other protocol (--protocol %3), it has no power, %4</source>
        <translation>%1 по %2 пока не отвечает, опрос идёт; вероятные причины: касса настроена на другой протокол (--protocol %3), нет питания, %4</translation>
    </message>
    <message>
        <source>something else listens there</source>
        <translation>там слушает что-то другое</translation>
    </message>
    <message>
        <source>the cable, another port, another speed in its settings</source>
        <translation>кабель, другой порт, другая скорость в её настройках</translation>
    </message>
    <message>
        <source>params: this plugin does not tell the register&apos;s parameters as data</source>
        <translation>params: этот плагин не отдаёт параметры кассы как данные</translation>
    </message>
    <message>
        <source>sales of earlier runs are not settled: </source>
        <translation>исход прошлых продаж не установлен: </translation>
    </message>
    <message>
        <source> printed</source>
        <translation> напечатан</translation>
    </message>
    <message>
        <source>X report</source>
        <translation>X-отчёт</translation>
    </message>
    <message>
        <source>the shift was closed already</source>
        <translation>смена уже была закрыта</translation>
    </message>
    <message>
        <source>shift closed</source>
        <translation>смена закрыта</translation>
    </message>
    <message>
        <source>report on the state of settlements</source>
        <translation>отчёт о состоянии расчётов</translation>
    </message>
    <message>
        <source>document %1</source>
        <translation>документ %1</translation>
    </message>
    <message>
        <source>last document</source>
        <translation>последний документ</translation>
    </message>
    <message>
        <source>print-document: &quot;%1&quot; is no document number</source>
        <translation>print-document: &quot;%1&quot; — не номер документа</translation>
    </message>
    <message>
        <source>schema: &quot;%1&quot; is no schema; there are %2</source>
        <translation>schema: схемы &quot;%1&quot; нет; есть %2</translation>
    </message>
    <message>
        <source>port %1 cannot be served: %2</source>
        <translation>порт %1 не создать: %2</translation>
    </message>
    <message>
        <source>it is there already</source>
        <translation>он уже есть</translation>
    </message>
    <message>
        <source>the link cannot be made</source>
        <translation>ссылка не создаётся</translation>
    </message>
    <message>
        <source>trace replay: &quot;%1&quot; names no port</source>
        <translation>trace replay: &quot;%1&quot; — не имя порта</translation>
    </message>
    <message>
        <source>model: %1</source>
        <translation>модель: %1</translation>
    </message>
    <message>
        <source>serial number: %1</source>
        <translation>заводской номер: %1</translation>
    </message>
    <message>
        <source>firmware: %1</source>
        <translation>прошивка: %1</translation>
    </message>
    <message>
        <source>time: %1</source>
        <translation>время: %1</translation>
    </message>
    <message>
        <source>shift: %1</source>
        <translation>смена: %1</translation>
    </message>
    <message>
        <source>paper: -</source>
        <translation>бумага: -</translation>
    </message>
    <message>
        <source>cover: -</source>
        <translation>крышка: -</translation>
    </message>
    <message>
        <source>drawer: %1</source>
        <translation>денежный ящик: %1</translation>
    </message>
    <message>
        <source>the shift was open already</source>
        <translation>смена уже была открыта</translation>
    </message>
    <message>
        <source>shift opened</source>
        <translation>смена открыта</translation>
    </message>
    <message>
        <source>document cancelled</source>
        <translation>документ отменён</translation>
    </message>
    <message>
        <source>drawer opened</source>
        <translation>денежный ящик открыт</translation>
    </message>
    <message>
        <source>time set: %1 is before the fiscal drive&apos;s last document, %2; --force sets it all the same</source>
        <translation>time set: %1 раньше последнего документа фискального накопителя, %2; --force поставит всё равно</translation>
    </message>
    <message>
        <source>time set: %1 is more than 5 minutes from this computer&apos;s clock, %2; --force sets it all the same</source>
        <translation>time set: %1 отличается от часов этого компьютера, %2, более чем на 5 минут; --force поставит всё равно</translation>
    </message>
    <message>
        <source>the register does not take the time now</source>
        <translation>касса сейчас не принимает время</translation>
    </message>
    <message>
        <source>result of the check (tag 2106): %1</source>
        <translation>результат проверки (тег 2106): %1</translation>
    </message>
    <message>
        <source>time: &quot;%1&quot; is not a time as 2024-12-31T23:59:59</source>
        <translation>time: &quot;%1&quot; — не время вида 2024-12-31T23:59:59</translation>
    </message>
    <message>
        <source>drawer: &quot;%1&quot; is neither open nor state</source>
        <translation>drawer: &quot;%1&quot; — не open и не state</translation>
    </message>
    <message>
        <source>time takes get, set or set TIME</source>
        <translation>аргументы команды time: get, set или set TIME</translation>
    </message>
    <message>
        <source>--force goes with time set</source>
        <translation>--force — только с time set</translation>
    </message>
    <message>
        <source>mark: the code is empty</source>
        <translation>mark: код пуст</translation>
    </message>
    <message>
        <source>; did you mean %1%2?</source>
        <translation>; может быть, %1%2?</translation>
    </message>
    <message>
        <source>the register takes %1</source>
        <translation>касса принимает %1</translation>
    </message>
    <message>
        <source>a printed line has %1</source>
        <translation>в строке печати %1</translation>
    </message>
    <message>
        <source>has %1 characters, </source>
        <translation>символов %1, </translation>
    </message>
    <message>
        <source>; is sent as it stands</source>
        <translation>; передаётся как есть</translation>
    </message>
    <message>
        <source>a line broke off, as when the program was killed; it is left out</source>
        <translation>строка оборвана, как бывает, когда программу убили; она пропущена</translation>
    </message>
    <message>
        <source>the same</source>
        <translation>одинаковы</translation>
    </message>
    <message>
        <source>%1 frames written: %2</source>
        <translation>записано кадров: %1, файл %2</translation>
    </message>
    <message>
        <source>trace replay: --as is register or host</source>
        <translation>trace replay: --as — register или host</translation>
    </message>
    <message>
        <source>%1 of %2 requests answered</source>
        <translation>отвечено на запросов: %1 из %2</translation>
    </message>
    <message>
        <source>ready on </source>
        <translation>готово на </translation>
    </message>
    <message>
        <source>%1 requests answered</source>
        <translation>отвечено на запросов: %1</translation>
    </message>
    <message>
        <source>refused: </source>
        <translation>отказано: </translation>
    </message>
    <message>
        <source>did not come: </source>
        <translation>не пришло: </translation>
    </message>
    <message>
        <source>port %1: %2</source>
        <translation>порт %1: %2</translation>
    </message>
    <message>
        <source>warning: </source>
        <translation>предупреждение: </translation>
    </message>
    <message>
        <source>the register was silent, and the request was sent again</source>
        <translation>касса молчала, и запрос отправлен повторно</translation>
    </message>
    <message>
        <source>closed</source>
        <comment>shift</comment>
        <translation>закрыта</translation>
    </message>
    <message>
        <source>open</source>
        <comment>shift</comment>
        <translation>открыта</translation>
    </message>
    <message>
        <source>open</source>
        <comment>drawer</comment>
        <translation>открыт</translation>
    </message>
    <message>
        <source>closed</source>
        <comment>drawer</comment>
        <translation>закрыт</translation>
    </message>
    <message>
        <source>reading the register&apos;s parameters</source>
        <translation>чтение параметров кассы</translation>
    </message>
    <message>
        <source>%1 ... %2 s</source>
        <translation>%1 ... %2 с</translation>
    </message>
    <message>
        <source>asking the register</source>
        <translation>опрос кассы</translation>
    </message>
    <message>
        <source>not asked, %1 works it</source>
        <translation>не опрашивалась, с ней работает %1</translation>
    </message>
    <message>
        <source>%1: asking over %2</source>
        <translation>%1: опрос по %2</translation>
    </message>
    <message>
        <source>The documents, in the order they were accepted in.</source>
        <translation>Документы в порядке приёма.</translation>
    </message>
    <message>
        <source>One document with its body, its attempts and its verdict.</source>
        <translation>Один документ: содержание, попытки и исход.</translation>
    </message>
    <message>
        <source>Ask the register what became of those that were begun and not settled, or of this one.</source>
        <translation>Узнать у кассы исход начатых документов без исхода или этого документа.</translation>
    </message>
    <message>
        <source>An unknown one stands on the tape with that number, a person saw.</source>
        <translation>Исход неизвестен: человек видел на ленте документ с этим номером.</translation>
    </message>
    <message>
        <source>An unknown one was not printed, a person saw; it may be sold again.</source>
        <translation>Исход неизвестен: на ленте документа нет; его можно пробить снова.</translation>
    </message>
    <message>
        <source>All of each document, a line of JSON for one.</source>
        <translation>Документы целиком, по строке JSON на каждый.</translation>
    </message>
    <message>
        <source>A sound copy of the journal in a new file.</source>
        <translation>Целостная копия журнала в новый файл.</translation>
    </message>
    <message>
        <source>Take customers and bodies out of what was settled before.</source>
        <translation>Удалить содержание и данные покупателей из документов, завершённых раньше этого дня.</translation>
    </message>
    <message>
        <source>Whether the file is sound; with a register also its shift&apos;s documents.</source>
        <translation>Цел ли файл; если задана касса, то и документы её смены.</translation>
    </message>
    <message>
        <source>The drive has documents that are not in the journal, and that is as it should be.</source>
        <translation>В ФН есть документы, которых нет в журнале, и так и должно быть.</translation>
    </message>
    <message>
        <source>no register at the ports that were asked, or the output was lost</source>
        <translation>на опрошенных портах кассы нет, или вывод потерян</translation>
    </message>
    <message>
        <source>something is wrong, or the output was lost</source>
        <translation>что-то неисправно, или вывод потерян</translation>
    </message>
    <message>
        <source>What this machine&apos;s journal knows of its documents.</source>
        <translation>Что журнал этого компьютера знает о документах.</translation>
    </message>
    <message>
        <source>failed; diff: they differ; replay: something was refused or did not come; the output was lost</source>
        <translation>ошибка; diff: есть различия; replay: что-то отклонено или не пришло; вывод потерян</translation>
    </message>
    <message>
        <source>
What it does:
</source>
        <translation>
Что умеет:
</translation>
    </message>
    <message>
        <source>frctl schema receipt tells the file&apos;s format whole, frctl names the words that it may have. A small one:</source>
        <translation>Формат файла целиком: frctl schema receipt, допустимые слова: frctl names. Небольшой чек:</translation>
    </message>
    <message>
        <source>no register is configured; looked for %1; frctl detect PORT prints a section to begin with</source>
        <translation>касса не настроена; искали %1; frctl detect PORT печатает готовый раздел</translation>
    </message>
    <message>
        <source>documents that wait: %1</source>
        <translation>ждут отправки документов: %1</translation>
    </message>
    <message>
        <source>--%1 is given twice: %2 and %3</source>
        <translation>--%1 задан дважды: %2 и %3</translation>
    </message>
    <message>
        <source>%1: over XML the register is known by its serial number alone: serial = ...</source>
        <translation>%1: по XML касса узнаётся только по заводскому номеру: serial = ...</translation>
    </message>
    <message>
        <source>Protocol of the register (XML; for check, detect and names both).</source>
        <translation>Протокол кассы (XML; для check, detect и names оба).</translation>
    </message>
    <message>
        <source>The driver&apos;s log on stderr (none).</source>
        <translation>Журнал драйвера в stderr (нет).</translation>
    </message>
    <message>
        <source>%1 is the pty of a program of %2: run frctl as that user</source>
        <translation>%1 — псевдотерминал программы пользователя %2: запускайте frctl от его имени</translation>
    </message>
    <message>
        <source>give %1 to a group by a udev rule (KERNEL==&quot;%2&quot;, GROUP=&quot;dialout&quot;, MODE=&quot;0660&quot;) in /etc/udev/rules.d, and be of that group</source>
        <translation>отдайте %1 группе правилом udev (KERNEL==&quot;%2&quot;, GROUP=&quot;dialout&quot;, MODE=&quot;0660&quot;) в /etc/udev/rules.d и войдите в эту группу</translation>
    </message>
    <message>
        <source>--json and --%1 - both take the standard output</source>
        <translation>--json и --%1 - вместе пишут в стандартный вывод</translation>
    </message>
    <message>
        <source>--%1 -: the standard output is a terminal, for which a picture is none</source>
        <translation>--%1 -: стандартный вывод — терминал, картинку он не покажет</translation>
    </message>
    <message>
        <source>%1: has several receipts, one a line; %2 takes one, frctl check as many as there are</source>
        <translation>%1: несколько чеков, по одному в строке; %2 принимает один, frctl check — сколько есть</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 с</translation>
    </message>
    <message>
        <source>%1 min %2 s</source>
        <translation>%1 мин %2 с</translation>
    </message>
    <message>
        <source>%1 h %2 min</source>
        <translation>%1 ч %2 мин</translation>
    </message>
    <message>
        <source>, as this computer&apos;s clock</source>
        <translation>, как часы этого компьютера</translation>
    </message>
    <message>
        <source>, %1 behind this computer&apos;s clock</source>
        <translation>, отстают от часов этого компьютера на %1</translation>
    </message>
    <message>
        <source>, %1 ahead of this computer&apos;s clock</source>
        <translation>, спешат относительно часов этого компьютера на %1</translation>
    </message>
    <message>
        <source>see to the network, and to what listens there</source>
        <translation>проверьте сеть и того, кто слушает этот адрес</translation>
    </message>
    <message>
        <source>plug it in, or name another one; frctl detect lists the ports</source>
        <translation>подключите его или назовите другой; frctl detect показывает порты</translation>
    </message>
    <message>
        <source>the other end has closed the line: it serves another program, or is no register</source>
        <translation>другая сторона закрыла соединение: она занята другой программой, или это не касса</translation>
    </message>
    <message>
        <source>%1 has fallen silent, still waiting; likely causes: it prints, it has no paper, its power or the cable has gone</source>
        <translation>%1 замолчал, ждём дальше; вероятно: касса печатает, нет бумаги, пропало питание или отошёл кабель</translation>
    </message>
    <message>
        <source>time set: this computer&apos;s clock, %1, is more than 5 minutes from the register&apos;s, %2; see which one is right; --force sets it all the same</source>
        <translation>time set: часы этого компьютера, %1, расходятся с часами кассы, %2, больше чем на 5 минут; проверьте, какие верны; --force всё равно ставит</translation>
    </message>
    <message>
        <source>PORT is /dev/ttyUSB0, the link of a pty, or tcp:host:port.
Each is asked for 4 seconds a protocol at most, one after the other, and none that another program has open.</source>
        <translation>PORT: /dev/ttyUSB0, ссылка на псевдотерминал или tcp:host:port.
На каждый уходит не больше 4 секунд на протокол, порты опрашиваются по очереди; порт, открытый другой программой, не опрашивается.</translation>
    </message>
    <message>
        <source>%1 does not answer over %2 as a register; likely causes: it is set to the other protocol (--protocol %3), another device is there, another speed in its settings</source>
        <translation>%1 отвечает по %2 не как касса; вероятно: она настроена на другой протокол (--protocol %3), там другое устройство, другая скорость в настройках</translation>
    </message>
    <message>
        <source>nothing was sent; the same id again when the journal works</source>
        <translation>ничего не отправлено; повторите с тем же идентификатором, когда журнал заработает</translation>
    </message>
    <message>
        <source>is missing: a receipt without it is not issued where several tax systems are registered</source>
        <translation>не указана: если касса зарегистрирована с несколькими системами налогообложения, чек без неё не пробивается</translation>
    </message>
    <message>
        <source>files that have no receipt: %1</source>
        <translation>файлов без чека: %1</translation>
    </message>
    <message>
        <source>nothing in the journal</source>
        <translation>в журнале ничего нет</translation>
    </message>
    <message>
        <source>nothing to settle on this register</source>
        <translation>на этой кассе нет документов с невыясненным исходом</translation>
    </message>
    <message>
        <source>journal settle --force needs the ID of the document</source>
        <translation>для journal settle --force нужен идентификатор документа</translation>
    </message>
    <message>
        <source>journal backup wants a file</source>
        <translation>journal backup: не указан файл</translation>
    </message>
    <message>
        <source>the register was silent, and the request was sent again: it may have printed more than once</source>
        <translation>касса не отвечала, и запрос отправлен повторно: документ мог напечататься не один раз</translation>
    </message>
    <message>
        <source>port %1: no answer to the question which register it is</source>
        <translation>порт %1: нет ответа на вопрос, какая это ККТ</translation>
    </message>
    <message>
        <source>, with stand-ins for names and texts</source>
        <translation>, с подстановками вместо имён и текстов</translation>
    </message>
    <message>
        <source>the trace does more than ask (%1), and the fiscal drive, %2, is none for tests: it would be done once more%3. --force plays it all the same</source>
        <translation>в трассе не только запросы состояния (%1), а ФН %2 — не тестовый: всё это будет выполнено ещё раз%3. С --force трасса проигрывается и так</translation>
    </message>
    <message>
        <source>not told</source>
        <translation>не сообщён</translation>
    </message>
    <message>
        <source>what the trace made stands in no journal: where one knows this register, the next document on it waits for frctl journal accept</source>
        <translation>того, что сделала трасса, нет ни в одном журнале: если журнал знает эту ККТ, следующий документ на ней ждёт frctl journal accept</translation>
    </message>
    <message>
        <source>Names, texts and passwords stand in the trace.</source>
        <translation>Имена, тексты и пароли остаются в трассе.</translation>
    </message>
    <message>
        <source>a masked part and a full one: names and passwords stand in it</source>
        <translation>часть трассы с подстановками, часть полная: в ней есть имена и пароли</translation>
    </message>
    <message>
        <source>trace replay: no port</source>
        <translation>trace replay: не указан порт</translation>
    </message>
    <message>
        <source>trace replay: the register speaks %1, and the trace is of the other protocol</source>
        <translation>trace replay: протокол ККТ — %1, а трасса снята по другому протоколу</translation>
    </message>
    <message>
        <source>The frames in words.</source>
        <translation>Кадры словами.</translation>
    </message>
    <message>
        <source>How the second differs from the first; exit status 1 when it does.</source>
        <translation>Чем вторая отличается от первой; код возврата 1, если отличается.</translation>
    </message>
    <message>
        <source>Play its register to any host. PORT is the link of a pty, which is made, or tcp:host:port to listen on. Exit status 1 when something was refused or did not come.</source>
        <translation>Сыграть её ККТ для любой хост-программы. PORT — ссылка на pty, которая создаётся, или tcp:host:port, где ждать соединения. Код возврата 1, если что-то отклонено или не пришло.</translation>
    </message>
    <message>
        <source>Play its host to a register and compare the answers; exit status 1 when they differ. What does more than ask is done once more: on a test drive alone, unless --force.</source>
        <translation>Сыграть её хост-программу для ККТ и сравнить ответы; код возврата 1, если они другие. Всё, кроме запросов состояния, выполняется ещё раз: без --force — только на тестовом ФН.</translation>
    </message>
    <message>
        <source>Write it as a capture file for Wireshark.</source>
        <translation>Записать её файлом захвата для Wireshark.</translation>
    </message>
    <message>
        <source>Print the script with which Wireshark reads that file.</source>
        <translation>Вывести скрипт, с которым Wireshark читает этот файл.</translation>
    </message>
    <message>
        <source>%1 requests refused</source>
        <translation>отклонено запросов: %1</translation>
    </message>
    <message>
        <source>Also what does harm: params set 31, time set far off, journal settle without the drive, trace replay; see the manual page.</source>
        <translation>Разрешить и опасное: params set 31, сильный перевод часов, journal settle без накопителя, trace replay; см. справочную страницу.</translation>
    </message>
    <message>
        <source>%1: no answer over %2: %3</source>
        <translation>%1: по %2 нет ответа: %3</translation>
    </message>
    <message>
        <source>documents wait</source>
        <translation>документы ждут</translation>
    </message>
    <message>
        <source>from number %1</source>
        <translation>с номера %1</translation>
    </message>
    <message>
        <source>a register is at work there; ask again later</source>
        <translation>касса занята работой; повторите опрос позже</translation>
    </message>
    <message>
        <source>port %1: the register does not tell which one it is: %2%3</source>
        <translation>порт %1: ККТ не сообщает, какая она: %2%3</translation>
    </message>
    <message>
        <source>; its password is that of --password</source>
        <translation>; её пароль задаёт --password</translation>
    </message>
    <message>
        <source>the trace does not start the register&apos;s work, without which it refuses after it was switched on: frctl status starts it</source>
        <translation>трасса не начинает работу ККТ, без чего после включения ККТ отказывает: работу начинает frctl status</translation>
    </message>
    <message>
        <source>%1 takes no --%2</source>
        <translation>%1: параметр --%2 здесь неприменим</translation>
    </message>
    <message>
        <source>wrong number of arguments: %1</source>
        <translation>неверное число аргументов: %1</translation>
    </message>
    <message>
        <source>--port: &quot;%1&quot; is neither service:NAME nor service://HOST:PORT/NAME</source>
        <translation>--port: «%1» — ни service:ИМЯ, ни service://УЗЕЛ:ПОРТ/ИМЯ</translation>
    </message>
    <message>
        <source>--token-file goes with a port of a service: service:NAME</source>
        <translation>--token-file указывают вместе с портом сервиса: service:ИМЯ</translation>
    </message>
    <message>
        <source>The register&apos;s line: /dev/tty..., the link of a pty, tcp:host:port, or a service&apos;s service:name.</source>
        <translation>Линия кассы: /dev/tty..., ссылка на pty, tcp:узел:порт или касса сервиса service:имя.</translation>
    </message>
    <message>
        <source>How long to wait for a port that another program works (0), or for a service (180).</source>
        <translation>Сколько ждать порт, занятый другой программой (0), или сервис (180).</translation>
    </message>
    <message>
        <source>The token for a service is in that file ($FRSERVER_TOKEN).</source>
        <translation>Токен сервиса — в этом файле ($FRSERVER_TOKEN).</translation>
    </message>
    <message>
        <source>no answer</source>
        <translation>ответа нет</translation>
    </message>
    <message>
        <source>its certificate is not trusted: %1</source>
        <translation>сертификату нет доверия: %1</translation>
    </message>
    <message>
        <source>no TLS came about with it: %1</source>
        <translation>связь по TLS не установлена: %1</translation>
    </message>
    <message>
        <source>nothing was sent to the service</source>
        <translation>сервису ничего не отправлено</translation>
    </message>
    <message>
        <source>nothing was sent to the service now; what an earlier run has made of that id it tells when the same is asked again: --id %1</source>
        <translation>сейчас сервису ничего не отправлено; что стало с этим id при прежних запусках, он скажет, когда команду повторят: --id %1</translation>
    </message>
    <message>
        <source>answers %1, which is not the answer of a service</source>
        <translation>ответ %1 — это не ответ сервиса</translation>
    </message>
    <message>
        <source>%1 printed</source>
        <translation>%1: напечатано</translation>
    </message>
    <message>
        <source>is no receipt</source>
        <translation>— не чек</translation>
    </message>
    <message>
        <source>the service may go on with it; the same again asks: --id %1</source>
        <translation>сервис может продолжить работу над документом; узнать о нём: повторите с --id %1</translation>
    </message>
    <message>
        <source>%1 (the first one is of %2)</source>
        <translation>%1 (первый документ — от %2)</translation>
    </message>
    <message>
        <source>%1 wants a token: --token-file, or FRSERVER_TOKEN</source>
        <translation>%1 требует токен: --token-file или FRSERVER_TOKEN</translation>
    </message>
    <message>
        <source>the same again when the service answers tells: --id %1</source>
        <translation>когда сервис ответит, повторите с --id %1: он скажет, что с документом</translation>
    </message>
    <message>
        <source>%1: %2; asking again, for %3 s at most</source>
        <translation>%1: %2; повторяю запрос, не дольше %3 с</translation>
    </message>
    <message>
        <source>service: %1</source>
        <translation>сервис: %1</translation>
    </message>
    <message>
        <source>waiting: %1, %2</source>
        <translation>ожидание: %1, %2</translation>
    </message>
    <message>
        <source>paused by: %1, since %2</source>
        <translation>приостановил: %1, с %2</translation>
    </message>
    <message>
        <source>documents: %1 queued, %2 running, %3 unknown</source>
        <translation>документы: в очереди %1, в работе %2, неизвестно %3</translation>
    </message>
    <message>
        <source>alarm: %1</source>
        <translation>тревога: %1</translation>
    </message>
    <message>
        <source>%1 does not go through a service, whose configuration says how it works its registers</source>
        <translation>%1 через сервис не действует: как работать с кассами, сказано в его настройках</translation>
    </message>
    <message>
        <source>journal is about this machine&apos;s journal: leave the service&apos;s --port out; what a service knows of its documents it tells on its page</source>
        <translation>journal относится к журналу этого компьютера: уберите --port сервиса; что сервис знает о своих документах, показывает его страница</translation>
    </message>
    <message>
        <source>%1 does not go through a service: have it pause %2, and name the register&apos;s own line with --port</source>
        <translation>%1 через сервис не выполняется: приостановите в нём %2 и укажите линию самой кассы в --port</translation>
    </message>
    <message>
        <source>%1 has no token, which is one word</source>
        <translation>%1: нет токена — это одно слово</translation>
    </message>
    <message>
        <source>--id: &quot;%1&quot; has not 8 to 64 of A-Z a-z 0-9 . _ : -</source>
        <translation>--id: в «%1» не 8–64 знака из A-Z a-z 0-9 . _ : -</translation>
    </message>
    <message>
        <source>the document&apos;s id: %1; after a failure the same again, with --id</source>
        <translation>номер документа: %1; после сбоя повторите с этим же --id</translation>
    </message>
    <message>
        <source>the service is still at it; the same id again tells</source>
        <translation>сервис ещё работает над документом; повторите с тем же --id</translation>
    </message>
    <message>
        <source>the service waits (%1) and makes it then; the same id again tells</source>
        <translation>сервис ждёт (%1) и затем оформит документ; повторите с тем же --id</translation>
    </message>
    <message>
        <source>its time was over before it could be begun</source>
        <translation>его время вышло раньше, чем его удалось начать</translation>
    </message>
    <message>
        <source>the service does not make it (%1)</source>
        <translation>сервис его не оформляет (%1)</translation>
    </message>
    <message>
        <source>For /etc/frspf/frserver.ini, where a service is to own it:</source>
        <translation>Для /etc/frspf/frserver.ini, если кассой будет владеть сервис:</translation>
    </message>
</context>
</TS>
