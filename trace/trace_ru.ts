<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="en">
<context>
    <name>trace</name>
    <message>
        <source>frame %1 %2 %3</source>
        <translation>кадр %1 %2 %3</translation>
    </message>
    <message>
        <source>no answer</source>
        <translation>ответа нет</translation>
    </message>
    <message>
        <source>an answer, expected none</source>
        <translation>есть ответ, которого не ждали</translation>
    </message>
    <message>
        <source>%1: %2, expected %3</source>
        <translation>%1: %2, ожидалось %3</translation>
    </message>
    <message>
        <source>%1, expected %2</source>
        <translation>%1, ожидалось %2</translation>
    </message>
    <message>
        <source>%1: missing</source>
        <translation>%1: отсутствует</translation>
    </message>
    <message>
        <source>%1: too much</source>
        <translation>%1: лишнее</translation>
    </message>
    <message>
        <source>the trace is over</source>
        <translation>трасса кончилась</translation>
    </message>
    <message>
        <source>is there and is no trace</source>
        <translation>уже есть, и это не трасса</translation>
    </message>
    <message>
        <source>is no head, no note, and no frame as TIME CONNECTION &gt; BYTES MEANING</source>
        <translation>не заголовок, не заметка и не кадр вида TIME CONNECTION &gt; BYTES MEANING</translation>
    </message>
    <message>
        <source>has no time that there is</source>
        <translation>такого времени не бывает</translation>
    </message>
    <message>
        <source>has half a byte at the end of its bytes</source>
        <translation>в конце байтов — половина байта</translation>
    </message>
    <message>
        <source>line 1: is not the head of a trace, &quot;# frtrace 1&quot;</source>
        <translation>строка 1: не заголовок трассы &quot;# frtrace 1&quot;</translation>
    </message>
    <message>
        <source>line %1: %2</source>
        <translation>строка %1: %2</translation>
    </message>
    <message>
        <source>only in the first: %1</source>
        <translation>только в первой: %1</translation>
    </message>
    <message>
        <source>only in the second: %1</source>
        <translation>только во второй: %1</translation>
    </message>
    <message>
        <source>is there and is a full trace, which a masked one cannot be added to</source>
        <translation>уже есть, и это полная трасса: трасса с подстановками в неё не дописывается</translation>
    </message>
    <message>
        <source>is there and is a masked trace, which a full one cannot be added to</source>
        <translation>уже есть, и это трасса с подстановками: полная в неё не дописывается</translation>
    </message>
</context>
</TS>
