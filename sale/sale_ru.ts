<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="en">
<context>
    <name>sale</name>
    <message>
        <source>&quot;%1&quot; is the id of another receipt, of %2</source>
        <translation>&quot;%1&quot; — имя другого чека, от %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is the id of a document of %2 that was archived: what has become of it stands in the archive</source>
        <translation>&quot;%1&quot; — имя документа от %2, сданного в архив: что с ним стало, известно там</translation>
    </message>
    <message>
        <source>the time of the document %1 is over</source>
        <translation>время документа %1 вышло</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has not 8 to 64 of A-Z a-z 0-9 . _ : -</source>
        <translation>&quot;%1&quot;: нужно от 8 до 64 символов из A-Z a-z 0-9 . _ : -</translation>
    </message>
    <message>
        <source>whoever sells must be able to write the file and its folder: be of the group %1 (usermod -aG %1 USER, then log in anew)</source>
        <translation>кто продаёт, тот должен иметь право писать в файл и его каталог: нужна группа %1 (usermod -aG %1 USER, затем войти заново)</translation>
    </message>
    <message>
        <source>another program has it locked; try again, and end that program if it hangs</source>
        <translation>он заблокирован другой программой; повторите, а если она зависла, завершите её</translation>
    </message>
    <message>
        <source>the disk is full; nothing is sold until there is room</source>
        <translation>диск заполнен; продаж нет, пока нет места</translation>
    </message>
    <message>
        <source>it is damaged; put a backup in its place (a service is told so by frserver restored), or move it away and look through the register&apos;s tape before you accept what it has</source>
        <translation>он повреждён; верните резервную копию (службе об этом говорит frserver restored) или уберите его и просмотрите ленту кассы, прежде чем признать её документы</translation>
    </message>
    <message>
        <source>the disk fails or has no room</source>
        <translation>диск неисправен или заполнен</translation>
    </message>
    <message>
        <source>journal %1: %2</source>
        <translation>журнал %1: %2</translation>
    </message>
    <message>
        <source>name one that is not there</source>
        <translation>назовите файл, которого ещё нет</translation>
    </message>
    <message>
        <source>was found bad by the register: %1</source>
        <translation>признан кассой негодным: %1</translation>
    </message>
    <message>
        <source>was not wholly checked by the register: %1</source>
        <translation>проверен кассой не полностью: %1</translation>
    </message>
    <message>
        <source>verification key wrong</source>
        <translation>ключ проверки неверен</translation>
    </message>
    <message>
        <source>verification key right</source>
        <translation>ключ проверки верен</translation>
    </message>
    <message>
        <source>verification key not checked by the fiscal drive</source>
        <translation>ключ проверки не проверен фискальным накопителем</translation>
    </message>
    <message>
        <source>planned status of the goods wrong on line</source>
        <translation>планируемый статус товара неверен по онлайн-проверке</translation>
    </message>
    <message>
        <source>planned status of the goods right on line</source>
        <translation>планируемый статус товара верен по онлайн-проверке</translation>
    </message>
    <message>
        <source>planned status of the goods not checked on line</source>
        <translation>планируемый статус товара онлайн не проверен</translation>
    </message>
    <message>
        <source>checked by a register in autonomous mode</source>
        <translation>проверено кассой в автономном режиме</translation>
    </message>
    <message>
        <source>the document was cancelled</source>
        <translation>документ отменён</translation>
    </message>
    <message>
        <source>the document could not be cancelled; the register&apos;s next start cleans it up</source>
        <translation>документ отменить не удалось; он будет убран при следующем запуске кассы</translation>
    </message>
    <message>
        <source>the document was being closed: it may have been issued, look at the register before you repeat it</source>
        <translation>документ закрывался: возможно, он пробит; прежде чем повторять, посмотрите на кассу</translation>
    </message>
    <message>
        <source>the document may have been issued: look at the register before you repeat it</source>
        <translation>возможно, документ пробит: прежде чем повторять, посмотрите на кассу</translation>
    </message>
    <message>
        <source>the document was issued; do not repeat it</source>
        <translation>документ пробит; не повторяйте его</translation>
    </message>
    <message>
        <source>the document was not issued; it may be repeated</source>
        <translation>документ не пробит; его можно повторить</translation>
    </message>
    <message>
        <source>another register is at the line: its %1 is %2, not %3</source>
        <translation>на линии другая касса: %1 — %2, а не %3</translation>
    </message>
    <message>
        <source>another fiscal drive is in the register: %1, not %2</source>
        <translation>в кассе другой ФН: %1, а не %2</translation>
    </message>
    <message>
        <source>serial number</source>
        <translation>заводской номер</translation>
    </message>
    <message>
        <source>tax number</source>
        <translation>ИНН</translation>
    </message>
    <message>
        <source>receipts</source>
        <translation>чеки</translation>
    </message>
    <message>
        <source>documents %1 to %2</source>
        <translation>документы с %1 по %2</translation>
    </message>
    <message>
        <source>the register has %1 of fiscal drive %2 that this journal does not know: look at its tape for sales of yours before you accept them</source>
        <translation>в кассе есть %1 фискального накопителя %2, которых нет в этом журнале: найдите на ленте свои продажи, прежде чем признать их</translation>
    </message>
    <message>
        <source>may have been sold on %1: that sale was broken off</source>
        <translation>возможно, продан %1: та продажа оборвалась</translation>
    </message>
    <message>
        <source>was sold on %1, document %2 of fiscal drive %3, and not returned since</source>
        <translation>продан %1, документ %2 фискального накопителя %3, и с тех пор не возвращён</translation>
    </message>
    <message>
        <source>the document was issued %1 times: if it moved cash, take back %2 of them</source>
        <translation>документ пробит столько раз: %1; если двигались наличные, столько раз верните: %2</translation>
    </message>
    <message>
        <source>document %1: </source>
        <translation>документ %1: </translation>
    </message>
    <message>
        <source>%1 is no folder; move it away</source>
        <translation>%1 — не каталог; уберите его</translation>
    </message>
    <message>
        <source>it is on a file system that is mounted read-only</source>
        <translation>он на файловой системе, смонтированной только для чтения</translation>
    </message>
    <message>
        <source>the file is not for its group; its owner or root has to do: chgrp %1 %2; chmod 660 %2</source>
        <translation>файл недоступен своей группе; его владельцу или root надо выполнить: chgrp %1 %2; chmod 660 %2</translation>
    </message>
    <message>
        <source>this user must be able to write its folder, too: there are files beside it while it is in use</source>
        <translation>этому пользователю нужно право записи и в его каталог: во время работы рядом лежат вспомогательные файлы</translation>
    </message>
    <message>
        <source>it must be a file that this user can write, in a folder that this user can write</source>
        <translation>нужен файл с правом записи для этого пользователя, в каталоге с правом записи для него же</translation>
    </message>
    <message>
        <source>name one on a disk that has room</source>
        <translation>укажите файл на диске, где есть место</translation>
    </message>
    <message>
        <source>name one that this user can make</source>
        <translation>укажите файл, который этот пользователь может создать</translation>
    </message>
    <message>
        <source>former journal %1 cannot be taken over: %2; put a backup in its place, or move it away to go on without what it knows as sold</source>
        <translation>прежний журнал %1 не удаётся перенести: %2; замените его резервной копией или уберите, если можно продолжать без его сведений о продажах</translation>
    </message>
    <message>
        <source>former journal %1 cannot be looked at: %2; make it reachable (a disk that is not mounted, a folder without rights), it may know as sold what is to be sold</source>
        <translation>прежний журнал %1 недоступен: %2; откройте к нему доступ (не смонтирован диск, нет прав на каталог): в нём могут быть сведения о сделанных продажах</translation>
    </message>
    <message>
        <source>it is a file of another program</source>
        <translation>это файл другой программы</translation>
    </message>
    <message>
        <source>name another file, or move this one away</source>
        <translation>укажите другой файл или уберите этот</translation>
    </message>
    <message>
        <source>it was moved away or replaced while it was in use</source>
        <translation>во время работы его переместили или заменили</translation>
    </message>
    <message>
        <source>put it back, or start the program again to go on with what is there now</source>
        <translation>верните его или запустите программу заново, чтобы работать с тем, что сейчас на его месте</translation>
    </message>
    <message>
        <source>it has moved to another machine</source>
        <translation>он переехал на другой компьютер</translation>
    </message>
    <message>
        <source>sell there, or export it there and import it here</source>
        <translation>продавайте там или верните его оттуда командами export и import</translation>
    </message>
    <message>
        <source>it was written by a later release</source>
        <translation>он записан более новой версией</translation>
    </message>
    <message>
        <source>install that release again; an older copy in its place does not know what was sold since</source>
        <translation>установите снова ту версию; более старая копия не знает о продажах, сделанных после неё</translation>
    </message>
    <message>
        <source>the document %1 was begun on fiscal drive %2; the register tells no number of its drive</source>
        <translation>документ %1 начат на фискальном накопителе %2; касса не сообщает номер своего</translation>
    </message>
    <message>
        <source>the document %1 was begun on fiscal drive %2; at the line is %3</source>
        <translation>документ %1 начат на фискальном накопителе %2; подключён %3</translation>
    </message>
    <message>
        <source>document %1</source>
        <translation>документ %1</translation>
    </message>
    <message>
        <source>the copy %1 cannot be made: %2</source>
        <translation>не удаётся сделать копию %1: %2</translation>
    </message>
    <message>
        <source>must be a sum above zero in whole kopecks</source>
        <translation>должно быть суммой больше нуля в целых копейках</translation>
    </message>
    <message>
        <source>must be an array of texts</source>
        <translation>должно быть массивом текстов</translation>
    </message>
    <message>
        <source>must be the number of a document</source>
        <translation>должно быть номером документа</translation>
    </message>
    <message>
        <source>is no document that is made out of a queue</source>
        <translation>не документ, который выполняется из очереди</translation>
    </message>
    <message>
        <source>the register was silent, and the request was sent again</source>
        <translation>касса молчала, и запрос был послан снова</translation>
    </message>
    <message>
        <source>the journal has no document %1</source>
        <translation>в журнале нет документа %1</translation>
    </message>
    <message>
        <source>the shift is closed</source>
        <translation>смена закрыта</translation>
    </message>
    <message>
        <source>the shift is open already</source>
        <translation>смена уже открыта</translation>
    </message>
    <message>
        <source>the shift is closed already</source>
        <translation>смена уже закрыта</translation>
    </message>
    <message>
        <source>the register was silent, and the request was sent again: it may have printed more than once</source>
        <translation>касса молчала, и запрос был послан снова: документ мог напечататься не один раз</translation>
    </message>
    <message>
        <source>comes to more than is left of the sale, %1</source>
        <translation>больше, чем осталось от продажи: %1</translation>
    </message>
    <message>
        <source>is a return of the sale whose positions the journal does not keep any more</source>
        <translation>возврат этой продажи, позиций которого в журнале уже нет</translation>
    </message>
    <message>
        <source>is more than is left of the sale at this price, %1</source>
        <translation>больше, чем осталось от продажи по этой цене: %1</translation>
    </message>
    <message>
        <source>was not sold with this sale</source>
        <translation>этой продажей не продавалось</translation>
    </message>
    <message>
        <source>is not the price at which it was issued, %1</source>
        <translation>не та цена, по которой пробито: %1</translation>
    </message>
    <message>
        <source>is no document of this journal</source>
        <translation>не документ этого журнала</translation>
    </message>
    <message>
        <source>is not a sale</source>
        <translation>не продажа</translation>
    </message>
    <message>
        <source>is not known to be issued</source>
        <translation>не известно, пробит ли</translation>
    </message>
    <message>
        <source>is a sale whose positions the journal does not keep</source>
        <translation>продажа, позиций которой в журнале нет</translation>
    </message>
    <message>
        <source>nothing is sold until the database answers again</source>
        <translation>пока база данных не ответит, ничего не продаётся</translation>
    </message>
    <message>
        <source>the database does not let this user in; a password belongs into .pgpass</source>
        <translation>база данных не впускает этого пользователя; пароль хранят в .pgpass</translation>
    </message>
    <message>
        <source>make the database first, with createdb</source>
        <translation>сначала создайте базу данных командой createdb</translation>
    </message>
    <message>
        <source>frserver migrate makes the tables</source>
        <translation>таблицы создаёт frserver migrate</translation>
    </message>
    <message>
        <source>give this user the right to the tables</source>
        <translation>дайте этому пользователю права на таблицы</translation>
    </message>
    <message>
        <source>this server only reads; name the one that writes</source>
        <translation>этот сервер только для чтения; укажите тот, который пишет</translation>
    </message>
    <message>
        <source>the server&apos;s disk is full; nothing is sold until there is room</source>
        <translation>диск сервера полон; пока нет места, ничего не продаётся</translation>
    </message>
    <message>
        <source>the address of the database %1</source>
        <translation>адрес базы данных %1</translation>
    </message>
    <message>
        <source>it looks like postgresql://USER@HOST:PORT/DATABASE</source>
        <translation>он выглядит так: postgresql://USER@HOST:PORT/DATABASE</translation>
    </message>
    <message>
        <source>has a parameter that libpq does not take</source>
        <translation>содержит параметр, которого libpq не принимает</translation>
    </message>
    <message>
        <source>journal %1 is one of a later release</source>
        <translation>журнал %1 — более нового выпуска</translation>
    </message>
    <message>
        <source>journal %1: the database is not one of UTF-8</source>
        <translation>журнал %1: кодировка базы данных не UTF-8</translation>
    </message>
    <message>
        <source>journal %1 has no tables yet</source>
        <translation>в журнале %1 ещё нет таблиц</translation>
    </message>
    <message>
        <source>journal %1 is one of a former release</source>
        <translation>журнал %1 — прежнего выпуска</translation>
    </message>
    <message>
        <source>journal %1: Qt has no driver for PostgreSQL here</source>
        <translation>журнал %1: у Qt здесь нет драйвера PostgreSQL</translation>
    </message>
    <message>
        <source>change what stands behind the question mark</source>
        <translation>исправьте то, что стоит за вопросительным знаком</translation>
    </message>
    <message>
        <source>libpq is not there: %1</source>
        <translation>нет libpq: %1</translation>
    </message>
    <message>
        <source>install libqt6sql6-psql</source>
        <translation>установите libqt6sql6-psql</translation>
    </message>
    <message>
        <source>journal %1: the server does not write to its disk</source>
        <translation>журнал %1: сервер не пишет на диск</translation>
    </message>
    <message>
        <source>set fsync = on</source>
        <translation>включите fsync = on</translation>
    </message>
    <message>
        <source>journal %1: the server does not tell whether it has written what it was told last</source>
        <translation>журнал %1: сервер не говорит, записал ли он последнее</translation>
    </message>
    <message>
        <source>cannot be read</source>
        <translation>не читается</translation>
    </message>
    <message>
        <source>names no database</source>
        <translation>не называет базы данных</translation>
    </message>
    <message>
        <source>journal %1 is kept by PostgreSQL</source>
        <translation>журнал %1 хранит PostgreSQL</translation>
    </message>
    <message>
        <source>back it up with pg_basebackup, or pg_dump</source>
        <translation>копию снимают pg_basebackup или pg_dump</translation>
    </message>
    <message>
        <source>journal %1 is in use: %2</source>
        <translation>журнал %1 занят: %2</translation>
    </message>
    <message>
        <source>end all its services first, on all machines</source>
        <translation>сначала остановите все его службы, на всех компьютерах</translation>
    </message>
    <message>
        <source>documents have no id</source>
        <translation>у документов нет идентификатора</translation>
    </message>
    <message>
        <source>attempts have no document</source>
        <translation>у попыток нет документа</translation>
    </message>
    <message>
        <source>journal %1: the register %2 has another owner by now</source>
        <translation>журнал %1: у кассы %2 уже другой владелец</translation>
    </message>
    <message>
        <source>the journal is damaged: attempt %1 at the document %2 is not there</source>
        <translation>журнал повреждён: попытки %1 документа %2 в нём нет</translation>
    </message>
    <message>
        <source>the register %1 is worked by frserver on %2</source>
        <translation>с кассой %1 работает frserver на %2</translation>
    </message>
    <message>
        <source>go through that service, or stop it</source>
        <translation>работайте через эту службу или остановите её</translation>
    </message>
    <message>
        <source>journal %1: the server does not answer</source>
        <translation>журнал %1: сервер не отвечает</translation>
    </message>
    <message>
        <source>the server has no connection left; raise its max_connections</source>
        <translation>у сервера не осталось свободных соединений; увеличьте его max_connections</translation>
    </message>
    <message>
        <source>the register with fiscal drive %1 is worked by process %2 on %3</source>
        <translation>с кассой с ФН %1 работает процесс %2 на %3</translation>
    </message>
    <message>
        <source>wait for its end</source>
        <translation>дождитесь его завершения</translation>
    </message>
    <message>
        <source>the register with fiscal drive %1 is worked by frserver on %2, as %3</source>
        <translation>с кассой с ФН %1 работает frserver на %2, там она называется %3</translation>
    </message>
    <message>
        <source>the register %1 is not known to have fiscal drive %2 for itself</source>
        <translation>не установлено, что ФН %2 принадлежит только кассе %1</translation>
    </message>
    <message>
        <source>When it was begun the fiscal drive %1 had reached number %2: its own one is higher.</source>
        <translation>Когда он был начат, ФН %1 дошёл до номера %2: его номер больше.</translation>
    </message>
    <message>
        <source>Behind it the fiscal drive %1 had reached number %2: its own one is not higher.</source>
        <translation>После него ФН %1 дошёл до номера %2: его номер не больше.</translation>
    </message>
    <message>
        <source>That number of the fiscal drive %1 is the document %2.</source>
        <translation>Этот номер в ФН %1 — у документа %2.</translation>
    </message>
    <message>
        <source>journal %1: process %2 of the server keeps the table %3 locked</source>
        <translation>журнал %1: процесс %2 сервера держит таблицу %3 заблокированной</translation>
    </message>
    <message>
        <source>try again, and end that process if it hangs</source>
        <translation>повторите, а если этот процесс завис, завершите его</translation>
    </message>
    <message>
        <source>journal %1: frspf.version does not say of which release its tables are</source>
        <translation>журнал %1: в frspf.version не сказано, какого выпуска его таблицы</translation>
    </message>
    <message>
        <source>somebody has changed that; put back the number, or a backup</source>
        <translation>кто-то изменил её; верните прежний номер или резервную копию</translation>
    </message>
</context>
</TS>
