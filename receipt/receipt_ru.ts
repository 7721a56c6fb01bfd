<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="en">
<context>
    <name>receipt</name>
    <message>
        <source>is whole in the receipt, but is cut to %1 characters over HEX in a shift that the receipt opens; is sent there as &quot;%2&quot;</source>
        <translation>в чеке остаётся целиком, но если чек откроет смену, по HEX обрезается до %1 символов; туда уходит &quot;%2&quot;</translation>
    </message>
    <message>
        <source>over </source>
        <translation>по </translation>
    </message>
    <message>
        <source>is carried %1 and cannot be dropped</source>
        <translation>передаётся %1, отбросить это нельзя</translation>
    </message>
    <message>
        <source>cannot be dropped: no field of this receipt that is not carried %1 has this path</source>
        <translation>нельзя отбросить: среди полей чека, которые не передаются %1, такого пути нет</translation>
    </message>
    <message>
        <source>is not printed %1 together with doubleWidth: the line is wide alone</source>
        <translation>не печатается %1 вместе с doubleWidth: строка будет только широкой</translation>
    </message>
    <message>
        <source>is dropped, since it is not carried </source>
        <translation>отброшено: не передаётся </translation>
    </message>
    <message>
        <source>is not carried %1; it must be dropped to issue the receipt without it</source>
        <translation>не передаётся %1; чтобы пробить чек без этого поля, отбросьте его</translation>
    </message>
    <message>
        <source>cannot be printed %1: it may not have &quot;%2&quot;</source>
        <translation>не печатается %1: недопустимо &quot;%2&quot;</translation>
    </message>
    <message>
        <source>true or false</source>
        <translation>значением true или false</translation>
    </message>
    <message>
        <source>a number</source>
        <translation>числом</translation>
    </message>
    <message>
        <source>a text</source>
        <translation>текстом</translation>
    </message>
    <message>
        <source>an array</source>
        <translation>массивом</translation>
    </message>
    <message>
        <source>an object</source>
        <translation>объектом</translation>
    </message>
    <message>
        <source>is missing</source>
        <translation>отсутствует</translation>
    </message>
    <message>
        <source>must be %1, not %2</source>
        <translation>должно быть %1, а не %2</translation>
    </message>
    <message>
        <source>must not be empty</source>
        <translation>не должно быть пустым</translation>
    </message>
    <message>
        <source>must have at most %1 characters, not %2</source>
        <translation>допустимо не более %1 символов, здесь %2</translation>
    </message>
    <message>
        <source>must be a whole number from %1 to %2</source>
        <translation>должно быть целым числом от %1 до %2</translation>
    </message>
    <message>
        <source>must have 10 or 12 digits</source>
        <translation>должно состоять из 10 или 12 цифр</translation>
    </message>
    <message>
        <source>is too large</source>
        <translation>слишком велико</translation>
    </message>
    <message>
        <source>must have at most %1 decimals</source>
        <translation>допустимо не более %1 знаков после запятой</translation>
    </message>
    <message>
        <source>must not be negative</source>
        <translation>не должно быть отрицательным</translation>
    </message>
    <message>
        <source>must be above zero</source>
        <translation>должно быть больше нуля</translation>
    </message>
    <message>
        <source>is none of </source>
        <translation>допустимо одно из: </translation>
    </message>
    <message>
        <source>an array of names</source>
        <translation>массивом имён</translation>
    </message>
    <message>
        <source>must be an object</source>
        <translation>должно быть объектом</translation>
    </message>
    <message>
        <source>an array of texts</source>
        <translation>массивом текстов</translation>
    </message>
    <message>
        <source>is not a known field here</source>
        <translation>неизвестное здесь поле</translation>
    </message>
    <message>
        <source>has the control character %1</source>
        <translation>содержит управляющий символ %1</translation>
    </message>
    <message>
        <source>has half of a character</source>
        <translation>содержит половину символа</translation>
    </message>
    <message>
        <source>%1 is nearer to zero than any number can be</source>
        <translation>%1 ближе к нулю, чем может быть число</translation>
    </message>
    <message>
        <source>stands there twice</source>
        <translation>встречается дважды</translation>
    </message>
    <message>
        <source>line %1: %2</source>
        <translation>строка %1: %2</translation>
    </message>
    <message>
        <source>is nested deeper than any receipt</source>
        <translation>вложенность больше, чем у любого чека</translation>
    </message>
    <message>
        <source>the text %1</source>
        <translation>текст %1</translation>
    </message>
    <message>
        <source>a receipt is a JSON object</source>
        <translation>чек — это объект JSON</translation>
    </message>
    <message>
        <source>has %1 with a wrong check digit, %2 would be right: scan it again</source>
        <translation>содержит %1 с неверной контрольной цифрой, верна %2: отсканируйте ещё раз</translation>
    </message>
    <message>
        <source>has lost its group separators (character 1D); with them it is &quot;%1&quot;: set the scanner to send them, in JSON they are written \u001d</source>
        <translation>потеряны разделители групп (символ 1D); с ними код &quot;%1&quot;: настройте сканер на их передачу, в JSON они пишутся \u001d</translation>
    </message>
    <message>
        <source>has lost its group separators (character 1D): the first would be due behind a serial number of at most 20 characters, here are %1; set the scanner to send them</source>
        <translation>потеряны разделители групп (символ 1D): первый стоит после серийного номера не длиннее 20 символов, здесь %1; настройте сканер на их передачу</translation>
    </message>
    <message>
        <source>has one of the fields 91, 92 and 93 twice: scan it once</source>
        <translation>одно из полей 91, 92 и 93 встречается дважды: отсканируйте код один раз</translation>
    </message>
    <message>
        <source>has a group separator that separates nothing; it is sent as it stands</source>
        <translation>есть разделитель групп, который ничего не разделяет; передаётся как есть</translation>
    </message>
    <message>
        <source>has none of the fields 91, 92 and 93 behind a group separator (character 1D), by which a code is known to be genuine; it is sent as it stands</source>
        <translation>нет ни одного из полей 91, 92 и 93 после разделителя групп (символ 1D), по которым видна подлинность кода; передаётся как есть</translation>
    </message>
    <message>
        <source>was scanned in the Russian keyboard layout, in the Latin one it is &quot;%1&quot;: set the keyboard layout to English, or the scanner to a serial port</source>
        <translation>отсканировано в русской раскладке, в латинской это &quot;%1&quot;: переключите раскладку на английскую или сканер на последовательный порт</translation>
    </message>
    <message>
        <source>has &quot;%1&quot; in place of its group separators (character 1D): set the scanner to send them, in JSON they are written \u001d</source>
        <translation>вместо разделителей групп (символ 1D) стоит &quot;%1&quot;: настройте сканер на их передачу, в JSON они пишутся \u001d</translation>
    </message>
    <message>
        <source>has blanks around it</source>
        <translation>окружено пробелами</translation>
    </message>
    <message>
        <source>is not as it stands on the goods: switch off brackets and the symbology identifier (as ]d2 in front) of the scanner</source>
        <translation>не такой, как на товаре: отключите в сканере скобки и идентификатор символики (]d2 в начале)</translation>
    </message>
    <message>
        <source>is no marking code: a GS1 code has 01, 14 digits, 21, a serial number, and 91 and 92 or 93 behind the character 1D; short codes are EAN-8, EAN-13, ITF-14, 29 characters of a tobacco pack, 68 or 150 capitals and digits of an excise stamp, a fur mark as RU-430302-ABC1234567</source>
        <translation>не код маркировки: в коде GS1 стоят 01, 14 цифр, 21, серийный номер, а после символа 1D — 91 и 92 или 93; короткие коды — EAN-8, EAN-13, ITF-14, 29 символов пачки табака, 68 или 150 заглавных букв и цифр акцизной марки, знак меха вида RU-430302-ABC1234567</translation>
    </message>
    <message>
        <source>the control character</source>
        <translation>управляющий символ</translation>
    </message>
    <message>
        <source>half of a character,</source>
        <translation>половину символа,</translation>
    </message>
    <message>
        <source>no character:</source>
        <translation>то, что не символ:</translation>
    </message>
    <message>
        <source>has %1 U+%2 at character %3</source>
        <translation>содержит %1 U+%2, позиция %3</translation>
    </message>
    <message>
        <source> and </source>
        <translation> и </translation>
    </message>
    <message>
        <source>is more than the line costs, %1</source>
        <translation>больше стоимости позиции, %1</translation>
    </message>
    <message>
        <source>must be price times quantity less the discount, %1</source>
        <translation>должно быть равно цене, умноженной на количество, за вычетом скидки: %1</translation>
    </message>
    <message>
        <source>marked goods are not split, since each piece is a position of its own</source>
        <translation>маркированный товар не разбивается: каждая штука — отдельная позиция</translation>
    </message>
    <message>
        <source>&quot;split&quot;: true in the position makes two positions of it</source>
        <translation>&quot;split&quot;: true в позиции сделает из неё две</translation>
    </message>
    <message>
        <source>only a whole quantity can be split into two positions</source>
        <translation>на две позиции делится только целое количество</translation>
    </message>
    <message>
        <source>does not divide into whole kopecks per unit; nearest possible: %1; %2</source>
        <translation>не делится на единицы товара в целых копейках; ближайшее возможное: %1; %2</translation>
    </message>
    <message>
        <source>the register takes one telephone</source>
        <translation>касса принимает один телефон</translation>
    </message>
    <message>
        <source>must have three digits</source>
        <translation>должно состоять из трёх цифр</translation>
    </message>
    <message>
        <source>must be a date as 31.12.2024</source>
        <translation>должно быть датой вида 31.12.2024</translation>
    </message>
    <message>
        <source>the printer has no &quot;%1&quot;</source>
        <translation>у принтера нет &quot;%1&quot;</translation>
    </message>
    <message>
        <source>is cut to %1 characters</source>
        <translation>обрезается до %1 символов</translation>
    </message>
    <message>
        <source>is printed as &quot;%1&quot;</source>
        <translation>печатается как &quot;%1&quot;</translation>
    </message>
    <message>
        <source>must not begin with %1, which is a command to the printer over XML</source>
        <translation>не должно начинаться с %1: по XML это команда принтеру</translation>
    </message>
    <message>
        <source>is not printed over %1; what is: %2</source>
        <translation>не печатается по %1; печатаются: %2</translation>
    </message>
    <message>
        <source>Latin letters, digits and signs of ASCII</source>
        <translation>латинские буквы, цифры и знаки ASCII</translation>
    </message>
    <message>
        <source>11 or 12 digits</source>
        <translation>11 или 12 цифр</translation>
    </message>
    <message>
        <source>6 to 8 digits</source>
        <translation>от 6 до 8 цифр</translation>
    </message>
    <message>
        <source>12 or 13 digits</source>
        <translation>12 или 13 цифр</translation>
    </message>
    <message>
        <source>7 or 8 digits</source>
        <translation>7 или 8 цифр</translation>
    </message>
    <message>
        <source>digits</source>
        <translation>цифры</translation>
    </message>
    <message>
        <source>digits, A to D and $ : / . + -</source>
        <translation>цифры, A–D и $ : / . + -</translation>
    </message>
    <message>
        <source>must be %1 in a barcode of type %2</source>
        <translation>допустимо: %1; тип штрихкода %2</translation>
    </message>
    <message>
        <source>, which XML cannot carry</source>
        <translation>, по XML это не передать</translation>
    </message>
    <message>
        <source> (given: %1)</source>
        <translation> (задано: %1)</translation>
    </message>
    <message>
        <source>%1 do not cover the total, %2</source>
        <translation>%1 не покрывает итог, %2</translation>
    </message>
    <message>
        <source>%1 without cash are more than the total, %2; only cash gives change</source>
        <translation>%1 безналичными больше итога, %2; сдача бывает только с наличных</translation>
    </message>
    <message>
        <source>must have a position</source>
        <translation>нужна хотя бы одна позиция</translation>
    </message>
    <message>
        <source>is not possible, only sell and sellReturn are: this driver issues no purchases and no corrections (see docs/limits.md)</source>
        <translation>невозможен, есть только sell и sellReturn: этот драйвер не пробивает чеки покупки и коррекции (см. docs/limits.md)</translation>
    </message>
    <message>
        <source>the code of the goods in it</source>
        <translation>код товара из неё</translation>
    </message>
    <message>
        <source>the first 14 characters of its code, as of a stamp of 150,</source>
        <translation>первые 14 символов кода, как у марки из 150,</translation>
    </message>
    <message>
        <source>the first 14 characters of its code</source>
        <translation>первые 14 символов её кода</translation>
    </message>
    <message>
        <source>is a group of which only %1 goes out over XML (tag 1163), without the whole code (tag 2000), which registers want for marked goods; as common the code goes out whole</source>
        <translation>группа, от которой по XML уходит только %1 (тег 1163), без полного кода (тег 2000), нужного кассам для маркированного товара; как common код уходит целиком</translation>
    </message>
    <message>
        <source>must be 1 for a marked piece: each has a code and a position of its own, and parts of a package cannot be sent through this driver</source>
        <translation>для маркированной штуки должно быть 1: у каждой свой код и своя позиция, а части упаковки через этот драйвер не передать</translation>
    </message>
    <message>
        <source>must be piece for marked goods: over XML the register is told of a piece, never of a measured quantity</source>
        <translation>для маркированного товара должно быть piece: по XML касса узнаёт о штуке, а не о мерном количестве</translation>
    </message>
    <message>
        <source>is missing: the payment object %1 is sold with its code</source>
        <translation>отсутствует: предмет расчёта %1 продаётся с кодом</translation>
    </message>
    <message>
        <source>has no marking code: with one goods are commodityWithMarking or exciseWithMarking</source>
        <translation>нет кода маркировки: с ним товар — commodityWithMarking или exciseWithMarking</translation>
    </message>
    <message>
        <source>stands at %1 too: one code is one piece</source>
        <translation>стоит и в %1: один код — одна штука</translation>
    </message>
    <message>
        <source>takes its money with this receipt: %1 for such positions, but without prepaid and credit the payments come to %2</source>
        <translation>оплачивается этим чеком: таких позиций на %1, а оплат без prepaid и credit — на %2</translation>
    </message>
    <message>
        <source>hands the goods over unpaid: payments of type credit must come to %1, not %2</source>
        <translation>товар передаётся без оплаты: оплат типа credit должно быть на %1, а не на %2</translation>
    </message>
    <message>
        <source>is more than positions by credit and partialPayment leave unpaid, %1</source>
        <translation>больше, чем остаётся неоплаченным в позициях credit и partialPayment: %1</translation>
    </message>
    <message>
        <source>is paid in part now and in part by a payment of type credit, which must be between %1 and %2, not %3</source>
        <translation>часть оплачивается сейчас, часть — оплатой типа credit, которая должна быть от %1 до %2, а не %3</translation>
    </message>
    <message>
        <source>settles an advance (paymentObject payment) without a payment of type prepaid; taking one is advance</source>
        <translation>зачитывает аванс (paymentObject payment) без оплаты типа prepaid; приём аванса — это advance</translation>
    </message>
    <message>
        <source>ended with 2025: a sale has %1 now, only the return of an older sale keeps it</source>
        <translation>кончилась с 2025 годом: в продаже теперь %1, прежняя остаётся только при возврате старой продажи</translation>
    </message>
    <message>
        <source>is missing: over XML tag %1 goes out empty</source>
        <translation>отсутствует: по XML тег %1 уходит пустым</translation>
    </message>
    <message>
        <source>has wrong check digits; it is sent as it stands</source>
        <translation>контрольные цифры неверны; передаётся как есть</translation>
    </message>
    <message>
        <source>is missing: an agent&apos;s goods need the tax number of their supplier, tag 1226; 000000000000 for one who has none</source>
        <translation>отсутствует: для товара агента нужен ИНН поставщика, тег 1226; 000000000000, если ИНН нет</translation>
    </message>
    <message>
        <source>is missing: the supplier of an agent&apos;s goods, tag 1225, goes out empty</source>
        <translation>отсутствует: поставщик товара агента, тег 1225, уходит пустым</translation>
    </message>
    <message>
        <source>is missing: an electronic receipt goes to an address or a telephone, tag 1008</source>
        <translation>отсутствует: электронный чек уходит на адрес почты или телефон, тег 1008</translation>
    </message>
    <message>
        <source>is missing: a supplier belongs to an agent&apos;s goods, whose tag 1222 goes out empty</source>
        <translation>отсутствует: поставщик бывает у товара агента, а тег 1222 уходит пустым</translation>
    </message>
    <message>
        <source>no text at all</source>
        <translation>вообще не текст</translation>
    </message>
    <message>
        <source>is not UTF-8: byte %1 at offset %2, line %3; it looks like %4</source>
        <translation>не UTF-8: байт %1, смещение %2, строка %3; похоже на %4</translation>
    </message>
    <message>
        <source>syntax error while parsing object separator</source>
        <translation>ошибка синтаксиса после ключа объекта</translation>
    </message>
    <message>
        <source>syntax error while parsing object key</source>
        <translation>ошибка синтаксиса в ключе объекта</translation>
    </message>
    <message>
        <source>syntax error while parsing object</source>
        <translation>ошибка синтаксиса в объекте</translation>
    </message>
    <message>
        <source>syntax error while parsing array</source>
        <translation>ошибка синтаксиса в массиве</translation>
    </message>
    <message>
        <source>syntax error while parsing value</source>
        <translation>ошибка синтаксиса в значении</translation>
    </message>
    <message>
        <source>invalid literal</source>
        <translation>неверное слово</translation>
    </message>
    <message>
        <source>invalid number</source>
        <translation>неверное число</translation>
    </message>
    <message>
        <source>invalid string</source>
        <translation>неверная строка</translation>
    </message>
    <message>
        <source>invalid BOM</source>
        <translation>неверная метка порядка байтов</translation>
    </message>
    <message>
        <source>ill-formed UTF-8 byte</source>
        <translation>байт не из UTF-8</translation>
    </message>
    <message>
        <source>missing closing quote</source>
        <translation>нет закрывающей кавычки</translation>
    </message>
    <message>
        <source>forbidden character after backslash</source>
        <translation>недопустимый символ после обратной косой черты</translation>
    </message>
    <message>
        <source>must be followed by 4 hex digits</source>
        <translation>требует за собой 4 шестнадцатеричные цифры</translation>
    </message>
    <message>
        <source>&apos;+&apos;, &apos;-&apos;, or digit after exponent sign</source>
        <translation>&apos;+&apos;, &apos;-&apos; или цифра после знака порядка</translation>
    </message>
    <message>
        <source>&apos;+&apos;, &apos;-&apos;, or digit after exponent</source>
        <translation>&apos;+&apos;, &apos;-&apos; или цифра после порядка</translation>
    </message>
    <message>
        <source>digit after</source>
        <translation>цифра после</translation>
    </message>
    <message>
        <source>exponent sign</source>
        <translation>знака порядка</translation>
    </message>
    <message>
        <source>&apos;[&apos;, &apos;{&apos;, or a literal</source>
        <translation>&apos;[&apos;, &apos;{&apos; или значение</translation>
    </message>
    <message>
        <source>string literal</source>
        <translation>строка</translation>
    </message>
    <message>
        <source>number literal</source>
        <translation>число</translation>
    </message>
    <message>
        <source>true literal</source>
        <translation>true</translation>
    </message>
    <message>
        <source>false literal</source>
        <translation>false</translation>
    </message>
    <message>
        <source>null literal</source>
        <translation>null</translation>
    </message>
    <message>
        <source>end of input</source>
        <translation>конец ввода</translation>
    </message>
    <message>
        <source>unexpected</source>
        <translation>неожиданно:</translation>
    </message>
    <message>
        <source>expected</source>
        <translation>ожидалось:</translation>
    </message>
    <message>
        <source>last read</source>
        <translation>прочитано</translation>
    </message>
    <message>
        <source>no</source>
        <translation>нет</translation>
    </message>
    <message>
        <source>yes, not of a QR code</source>
        <translation>да, но не у QR-кода</translation>
    </message>
    <message>
        <source>yes, not with doubleWidth</source>
        <translation>да, но не с doubleWidth</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>да</translation>
    </message>
    <message>
        <source>has a wrong check digit; the right one is %1</source>
        <translation>контрольная цифра неверна; верная — %1</translation>
    </message>
    <message>
        <source>has %1 positions; a register takes %2 at most, and may refuse the next one (too many positions)</source>
        <translation>позиций: %1; касса принимает не больше %2 и может отказать на следующей (слишком много позиций)</translation>
    </message>
</context>
</TS>
