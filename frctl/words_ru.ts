<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="en_US">
<context>
    <name>words</name>
    <message>
        <source>Sale</source>
        <translation>Приход</translation>
    </message>
    <message>
        <source>Goods go to the buyer, money comes in.</source>
        <translation>Товар отдан покупателю, деньги получены.</translation>
    </message>
    <message>
        <source>Return of a sale</source>
        <translation>Возврат прихода</translation>
    </message>
    <message>
        <source>Goods come back, money goes out.</source>
        <translation>Товар вернулся, деньги отданы.</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Общая</translation>
    </message>
    <message>
        <source>Simplified, on income</source>
        <translation>Упрощённая, доход</translation>
    </message>
    <message>
        <source>Simplified, on income less expenses</source>
        <translation>Упрощённая, доход минус расход</translation>
    </message>
    <message>
        <source>Imputed income</source>
        <translation>Единый налог на вменённый доход</translation>
    </message>
    <message>
        <source>Ended with 2020; registers know it still.</source>
        <translation>Отменён с 2021 года; ККТ его ещё знают.</translation>
    </message>
    <message>
        <source>Agricultural</source>
        <translation>Единый сельскохозяйственный налог</translation>
    </message>
    <message>
        <source>Patent</source>
        <translation>Патентная</translation>
    </message>
    <message>
        <source>VAT 20 %</source>
        <translation>НДС 20 %</translation>
    </message>
    <message>
        <source>Until the end of 2025; later in returns of older sales alone.</source>
        <translation>До конца 2025 года; потом только при возврате прежних продаж.</translation>
    </message>
    <message>
        <source>VAT 10 %</source>
        <translation>НДС 10 %</translation>
    </message>
    <message>
        <source>VAT 20/120</source>
        <translation>НДС 20/120</translation>
    </message>
    <message>
        <source>Out of a sum that has the tax in it, as an advance; until the end of 2025.</source>
        <translation>Из суммы, включающей налог, например аванса; до конца 2025 года.</translation>
    </message>
    <message>
        <source>VAT 10/110</source>
        <translation>НДС 10/110</translation>
    </message>
    <message>
        <source>Out of a sum that has the tax in it.</source>
        <translation>Из суммы, включающей налог.</translation>
    </message>
    <message>
        <source>VAT 0 %</source>
        <translation>НДС 0 %</translation>
    </message>
    <message>
        <source>Without VAT</source>
        <translation>Без НДС</translation>
    </message>
    <message>
        <source>VAT 5 %</source>
        <translation>НДС 5 %</translation>
    </message>
    <message>
        <source>Simplified tax system.</source>
        <translation>При упрощённой системе налогообложения.</translation>
    </message>
    <message>
        <source>VAT 7 %</source>
        <translation>НДС 7 %</translation>
    </message>
    <message>
        <source>VAT 5/105</source>
        <translation>НДС 5/105</translation>
    </message>
    <message>
        <source>VAT 7/107</source>
        <translation>НДС 7/107</translation>
    </message>
    <message>
        <source>VAT 22 %</source>
        <translation>НДС 22 %</translation>
    </message>
    <message>
        <source>Since 2026.</source>
        <translation>С 2026 года.</translation>
    </message>
    <message>
        <source>VAT 22/122</source>
        <translation>НДС 22/122</translation>
    </message>
    <message>
        <source>Out of a sum that has the tax in it, as an advance; since 2026.</source>
        <translation>Из суммы, включающей налог, например аванса; с 2026 года.</translation>
    </message>
    <message>
        <source>Another number of the tag</source>
        <translation>Другое число тега</translation>
    </message>
    <message>
        <source>A rate that has no name yet need not wait for it.</source>
        <translation>Ставке, у которой ещё нет имени, ждать его не нужно.</translation>
    </message>
    <message>
        <source>Full prepayment</source>
        <translation>Предоплата 100 %</translation>
    </message>
    <message>
        <source>All of the money before the goods.</source>
        <translation>Вся сумма до передачи товара.</translation>
    </message>
    <message>
        <source>Prepayment</source>
        <translation>Предоплата</translation>
    </message>
    <message>
        <source>A part of the money before the goods.</source>
        <translation>Часть суммы до передачи товара.</translation>
    </message>
    <message>
        <source>Advance</source>
        <translation>Аванс</translation>
    </message>
    <message>
        <source>Money before it is known for what.</source>
        <translation>Деньги, когда ещё неизвестно, за что.</translation>
    </message>
    <message>
        <source>Full payment</source>
        <translation>Полный расчёт</translation>
    </message>
    <message>
        <source>Goods and all of the money, or goods that an advance has paid for (payment of type prepaid).</source>
        <translation>Товар и вся сумма или товар, оплаченный авансом (оплата типа prepaid).</translation>
    </message>
    <message>
        <source>Part payment and credit</source>
        <translation>Частичный расчёт и кредит</translation>
    </message>
    <message>
        <source>Goods now; money in part, the rest by a payment of type credit.</source>
        <translation>Товар передан; деньги частью, остальное оплатой типа credit.</translation>
    </message>
    <message>
        <source>Credit</source>
        <translation>Передача в кредит</translation>
    </message>
    <message>
        <source>Goods now, money later: a payment of type credit.</source>
        <translation>Товар сейчас, деньги позже: оплата типа credit.</translation>
    </message>
    <message>
        <source>Payment of a credit</source>
        <translation>Оплата кредита</translation>
    </message>
    <message>
        <source>Money for goods that were handed over before.</source>
        <translation>Деньги за товар, переданный раньше.</translation>
    </message>
    <message>
        <source>Goods</source>
        <translation>Товар</translation>
    </message>
    <message>
        <source>Excise goods</source>
        <translation>Подакцизный товар</translation>
    </message>
    <message>
        <source>Work</source>
        <translation>Работа</translation>
    </message>
    <message>
        <source>Service</source>
        <translation>Услуга</translation>
    </message>
    <message>
        <source>Bet in a game of chance</source>
        <translation>Ставка азартной игры</translation>
    </message>
    <message>
        <source>Prize of a game of chance</source>
        <translation>Выигрыш азартной игры</translation>
    </message>
    <message>
        <source>Lottery ticket</source>
        <translation>Лотерейный билет</translation>
    </message>
    <message>
        <source>Lottery prize</source>
        <translation>Выигрыш лотереи</translation>
    </message>
    <message>
        <source>Rights to results of intellectual work</source>
        <translation>Предоставление РИД</translation>
    </message>
    <message>
        <source>Payment</source>
        <translation>Платёж</translation>
    </message>
    <message>
        <source>An advance or an instalment, behind which there are no goods yet.</source>
        <translation>Аванс или взнос, за которым товара ещё нет.</translation>
    </message>
    <message>
        <source>Agent&apos;s commission</source>
        <translation>Агентское вознаграждение</translation>
    </message>
    <message>
        <source>Contribution, penalty, reward, bonus or the like</source>
        <translation>Взнос, пеня, штраф, вознаграждение, бонус и подобное</translation>
    </message>
    <message>
        <source>Something else</source>
        <translation>Иной предмет расчёта</translation>
    </message>
    <message>
        <source>Property right</source>
        <translation>Имущественное право</translation>
    </message>
    <message>
        <source>Non-operating income</source>
        <translation>Внереализационный доход</translation>
    </message>
    <message>
        <source>Payments and contributions that lessen the tax</source>
        <translation>Платежи и взносы, уменьшающие налог</translation>
    </message>
    <message>
        <source>Trade levy</source>
        <translation>Торговый сбор</translation>
    </message>
    <message>
        <source>Resort fee</source>
        <translation>Курортный сбор</translation>
    </message>
    <message>
        <source>Deposit</source>
        <translation>Залог</translation>
    </message>
    <message>
        <source>Expense</source>
        <translation>Расход</translation>
    </message>
    <message>
        <source>Pension insurance, sole proprietor without employees</source>
        <translation>Взносы на ОПС, ИП без работников</translation>
    </message>
    <message>
        <source>Pension insurance, with employees</source>
        <translation>Взносы на ОПС, с работниками</translation>
    </message>
    <message>
        <source>Medical insurance, sole proprietor without employees</source>
        <translation>Взносы на ОМС, ИП без работников</translation>
    </message>
    <message>
        <source>Medical insurance, with employees</source>
        <translation>Взносы на ОМС, с работниками</translation>
    </message>
    <message>
        <source>Social insurance</source>
        <translation>Взносы на ОСС</translation>
    </message>
    <message>
        <source>Payment in a casino</source>
        <translation>Платёж казино</translation>
    </message>
    <message>
        <source>Cash handed out by a bank&apos;s agent</source>
        <translation>Выдача денежных средств банковским агентом</translation>
    </message>
    <message>
        <source>Excise goods that want a marking code and have none</source>
        <translation>Подакцизный товар, подлежащий маркировке, без кода маркировки</translation>
    </message>
    <message>
        <source>Excise goods with a marking code</source>
        <translation>Подакцизный товар с кодом маркировки</translation>
    </message>
    <message>
        <source>Wants markingCode.</source>
        <translation>Нужен markingCode.</translation>
    </message>
    <message>
        <source>Goods that want a marking code and have none</source>
        <translation>Товар, подлежащий маркировке, без кода маркировки</translation>
    </message>
    <message>
        <source>Goods with a marking code</source>
        <translation>Товар с кодом маркировки</translation>
    </message>
    <message>
        <source>An object that has no name yet need not wait for it.</source>
        <translation>Предмету, у которого ещё нет имени, ждать его не нужно.</translation>
    </message>
    <message>
        <source>Piece (шт.)</source>
        <translation>Штука (шт.)</translation>
    </message>
    <message>
        <source>Gram (г)</source>
        <translation>Грамм (г)</translation>
    </message>
    <message>
        <source>Kilogram (кг)</source>
        <translation>Килограмм (кг)</translation>
    </message>
    <message>
        <source>Ton (т)</source>
        <translation>Тонна (т)</translation>
    </message>
    <message>
        <source>Centimetre (см)</source>
        <translation>Сантиметр (см)</translation>
    </message>
    <message>
        <source>Decimetre (дм)</source>
        <translation>Дециметр (дм)</translation>
    </message>
    <message>
        <source>Metre (м)</source>
        <translation>Метр (м)</translation>
    </message>
    <message>
        <source>Square centimetre (кв. см)</source>
        <translation>Квадратный сантиметр (кв. см)</translation>
    </message>
    <message>
        <source>Square decimetre (кв. дм)</source>
        <translation>Квадратный дециметр (кв. дм)</translation>
    </message>
    <message>
        <source>Square metre (кв. м)</source>
        <translation>Квадратный метр (кв. м)</translation>
    </message>
    <message>
        <source>Millilitre (мл)</source>
        <translation>Миллилитр (мл)</translation>
    </message>
    <message>
        <source>Litre (л)</source>
        <translation>Литр (л)</translation>
    </message>
    <message>
        <source>Cubic metre (куб. м)</source>
        <translation>Кубический метр (куб. м)</translation>
    </message>
    <message>
        <source>Kilowatt-hour (кВт∙ч)</source>
        <translation>Киловатт-час (кВт∙ч)</translation>
    </message>
    <message>
        <source>Gigacalorie (Гкал)</source>
        <translation>Гигакалория (Гкал)</translation>
    </message>
    <message>
        <source>Day (сутки)</source>
        <translation>Сутки</translation>
    </message>
    <message>
        <source>Hour (час)</source>
        <translation>Час</translation>
    </message>
    <message>
        <source>Minute (мин)</source>
        <translation>Минута (мин)</translation>
    </message>
    <message>
        <source>Second (с)</source>
        <translation>Секунда (с)</translation>
    </message>
    <message>
        <source>Kilobyte (Кбайт)</source>
        <translation>Килобайт (Кбайт)</translation>
    </message>
    <message>
        <source>Megabyte (Мбайт)</source>
        <translation>Мегабайт (Мбайт)</translation>
    </message>
    <message>
        <source>Gigabyte (Гбайт)</source>
        <translation>Гигабайт (Гбайт)</translation>
    </message>
    <message>
        <source>Terabyte (Тбайт)</source>
        <translation>Терабайт (Тбайт)</translation>
    </message>
    <message>
        <source>Another unit</source>
        <translation>Иная единица</translation>
    </message>
    <message>
        <source>A unit that has no name yet need not wait for it.</source>
        <translation>Единице, у которой ещё нет имени, ждать его не нужно.</translation>
    </message>
    <message>
        <source>Furs</source>
        <translation>Меховые изделия</translation>
    </message>
    <message>
        <source>Over XML the control mark goes out as the code of the goods alone.</source>
        <translation>По XML контрольный знак уходит только как код товара.</translation>
    </message>
    <message>
        <source>Alcohol</source>
        <translation>Алкоголь</translation>
    </message>
    <message>
        <source>Over XML the first 14 characters go out alone.</source>
        <translation>По XML уходят только первые 14 символов.</translation>
    </message>
    <message>
        <source>Tobacco</source>
        <translation>Табак</translation>
    </message>
    <message>
        <source>Shoes</source>
        <translation>Обувь</translation>
    </message>
    <message>
        <source>Any goods with a GS1 code</source>
        <translation>Любой товар с кодом GS1</translation>
    </message>
    <message>
        <source>Clothes and textiles</source>
        <translation>Одежда и текстиль</translation>
    </message>
    <message>
        <source>Medicines</source>
        <translation>Лекарства</translation>
    </message>
    <message>
        <source>Another group</source>
        <translation>Другая группа</translation>
    </message>
    <message>
        <source>Over XML the code of the goods goes out alone.</source>
        <translation>По XML уходит только код товара.</translation>
    </message>
    <message>
        <source>Bank&apos;s paying agent</source>
        <translation>Банковский платёжный агент</translation>
    </message>
    <message>
        <source>Bank&apos;s paying subagent</source>
        <translation>Банковский платёжный субагент</translation>
    </message>
    <message>
        <source>Paying agent</source>
        <translation>Платёжный агент</translation>
    </message>
    <message>
        <source>Paying subagent</source>
        <translation>Платёжный субагент</translation>
    </message>
    <message>
        <source>Attorney</source>
        <translation>Поверенный</translation>
    </message>
    <message>
        <source>Commission agent</source>
        <translation>Комиссионер</translation>
    </message>
    <message>
        <source>Another agent</source>
        <translation>Иной агент</translation>
    </message>
    <message>
        <source>11 or 12 digits.</source>
        <translation>11 или 12 цифр.</translation>
    </message>
    <message>
        <source>6 to 8 digits.</source>
        <translation>От 6 до 8 цифр.</translation>
    </message>
    <message>
        <source>12 or 13 digits.</source>
        <translation>12 или 13 цифр.</translation>
    </message>
    <message>
        <source>7 or 8 digits.</source>
        <translation>7 или 8 цифр.</translation>
    </message>
    <message>
        <source>ASCII.</source>
        <translation>Символы ASCII.</translation>
    </message>
    <message>
        <source>Digits.</source>
        <translation>Цифры.</translation>
    </message>
    <message>
        <source>Digits, A to D and $ : / . + -</source>
        <translation>Цифры, буквы от A до D и $ : / . + -</translation>
    </message>
    <message>
        <source>QR code</source>
        <translation>QR-код</translation>
    </message>
    <message>
        <source>Any text; over HEX of characters that CP866 has.</source>
        <translation>Любой текст; по HEX из символов CP866.</translation>
    </message>
    <message>
        <source>Cash</source>
        <translation>Наличными</translation>
    </message>
    <message>
        <source>Tag 1031.</source>
        <translation>Тег 1031.</translation>
    </message>
    <message>
        <source>Card or other electronic money</source>
        <translation>Картой или иными электронными средствами</translation>
    </message>
    <message>
        <source>Tag 1081.</source>
        <translation>Тег 1081.</translation>
    </message>
    <message>
        <source>Set off against an advance or a prepayment</source>
        <translation>Зачёт аванса или предоплаты</translation>
    </message>
    <message>
        <source>Tag 1215.</source>
        <translation>Тег 1215.</translation>
    </message>
    <message>
        <source>On credit</source>
        <translation>В кредит</translation>
    </message>
    <message>
        <source>Tag 1216: paid later.</source>
        <translation>Тег 1216: оплата позже.</translation>
    </message>
    <message>
        <source>In another form</source>
        <translation>Встречным предоставлением</translation>
    </message>
    <message>
        <source>Tag 1217: by goods or services.</source>
        <translation>Тег 1217: товарами или услугами.</translation>
    </message>
</context>
</TS>
