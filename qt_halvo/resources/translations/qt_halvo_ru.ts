<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU">
<context>
    <name>OrvantaQT::ExpandingLabel</name>
    <message>
        <location filename="../../widgets/text/expanding_label.cpp" line="21"/>
        <source>Show more</source>
        <extracomment>Link after a shortened text that shows the whole text.</extracomment>
        <translation>Показать больше</translation>
    </message>
    <message>
        <location filename="../../widgets/text/expanding_label.cpp" line="23"/>
        <source>Show less</source>
        <extracomment>Link after a whole text that shortens it again.</extracomment>
        <translation>Показать меньше</translation>
    </message>
</context>
</TS>
