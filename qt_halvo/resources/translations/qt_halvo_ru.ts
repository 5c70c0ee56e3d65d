<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU">
<context>
    <name>OrvantaQT::BusyIndicatorRing</name>
    <message>
        <location filename="../../animation/busy_indicator_ring.cpp" line="+52"/>
        <source>Busy</source>
        <translation>Занят</translation>
    </message>
</context>
<context>
    <name>OrvantaQT::ExpandingLabel</name>
    <message>
        <location filename="../../widgets/text/expanding_label.cpp" line="+21"/>
        <source>Show more</source>
        <extracomment>Link after a shortened text that shows the whole text.</extracomment>
        <translation>Показать больше</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Show less</source>
        <extracomment>Link after a whole text that shortens it again.</extracomment>
        <translation>Показать меньше</translation>
    </message>
</context>
<context>
    <name>OrvantaQT::InfoOverlayWidget</name>
    <message>
        <location filename="../../layouts/info_overlay_widget.cpp" line="+165"/>
        <source>No results</source>
        <translation>Нет результатов</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Loading…</source>
        <translation>Загрузка…</translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Connection lost</source>
        <translation>Соединение потеряно</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Retry</source>
        <translation>Повторить</translation>
    </message>
</context>
<context>
    <name>OrvantaQT::ResizeGrip</name>
    <message>
        <location filename="../../layouts/resize_grip.cpp" line="+47"/>
        <source>Resize</source>
        <translation>Изменить размер</translation>
    </message>
</context>
</TS>
