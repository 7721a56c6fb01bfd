<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="en">
<context>
    <name>devices</name>
    <message>
        <source>the plugin does not take its property %1</source>
        <translation>плагин не принимает своё свойство %1</translation>
    </message>
    <message>
        <source>the plugin gives no driver</source>
        <translation>плагин не даёт драйвера</translation>
    </message>
    <message>
        <source>no plugin for this register in %1</source>
        <translation>нет плагина для этой кассы; искали в %1</translation>
    </message>
    <message>
        <source>%1 has no getObject</source>
        <translation>в %1 нет getObject</translation>
    </message>
    <message>
        <source>%1 gives no device object</source>
        <translation>%1 не даёт объекта устройства</translation>
    </message>
    <message>
        <source>another program</source>
        <translation>другая программа</translation>
    </message>
    <message>
        <source>process %1</source>
        <translation>процесс %1</translation>
    </message>
    <message>
        <source>&quot;%1&quot; names no port</source>
        <translation>&quot;%1&quot; — не имя порта</translation>
    </message>
    <message>
        <source>port %1 cannot be locked: %2</source>
        <translation>порт %1 не удалось заблокировать: %2</translation>
    </message>
    <message>
        <source>port %1 is busy: %2 works it</source>
        <translation>порт %1 занят: с ним работает %2</translation>
    </message>
    <message>
        <source>port %1 cannot be opened: %2</source>
        <translation>порт %1 не открывается: %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no [NAME]</source>
        <translation>&quot;%1&quot; — не [NAME]</translation>
    </message>
    <message>
        <source>[%1] is there already</source>
        <translation>[%1] уже есть</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no KEY = VALUE</source>
        <translation>&quot;%1&quot; — не KEY = VALUE</translation>
    </message>
    <message>
        <source>%1 stands before the first [NAME]</source>
        <translation>%1 стоит до первого [NAME]</translation>
    </message>
    <message>
        <source>[%1] %2 is there already</source>
        <translation>[%1] %2 уже есть</translation>
    </message>
</context>
<context>
    <name>devices::StreamDevice</name>
    <message>
        <source>the time for this port is spent</source>
        <translation>время, отведённое на этот порт, вышло</translation>
    </message>
</context>
</TS>
