<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="en">
<context>
    <name>frctl</name>
    <message>
        <source>not translated</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>has %1</source>
        <translation>имеет</translation>
    </message>
    <message>
        <source>in order</source>
        <translation>в порядке</translation>
    </message>
    <message>
        <source>gone</source>
        <translation>исчезло</translation>
    </message>
</context>
</TS>
