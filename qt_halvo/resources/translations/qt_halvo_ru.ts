<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU">
<context>
    <name>BusyIndicatorRing</name>
    <message>
        <location filename="../../qml/Orvanta/Controls/BusyIndicatorRing.qml" line="+26"/>
        <source>Busy</source>
        <translation>Занят</translation>
    </message>
</context>
<context>
    <name>NotificationBar</name>
    <message>
        <location filename="../../qml/Orvanta/Controls/NotificationBar.qml" line="+131"/>
        <source>Close</source>
        <translation>Закрыть</translation>
    </message>
</context>
<context>
    <name>OrvantaQT::BusyIndicatorRing</name>
    <message>
        <location filename="../../animation/busy_indicator_ring.cpp" line="+41"/>
        <source>Busy</source>
        <translation>Занят</translation>
    </message>
</context>
<context>
    <name>OrvantaQT::ChartAccessible</name>
    <message>
        <location filename="../../views/accessible_charts.cpp" line="+22"/>
        <source>%1%</source>
        <translation>%1 %</translation>
    </message>
</context>
<context>
    <name>OrvantaQT::ClosableViewHelper</name>
    <message>
        <location filename="../../views/closable_view.cpp" line="+221"/>
        <source>Close</source>
        <translation>Закрыть</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Close %1</source>
        <translation>Закрыть %1</translation>
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
    <name>OrvantaQT::FilePreviewProvider</name>
    <message>
        <location filename="../../images/file_preview_provider.cpp" line="+110"/>
        <source>No size to draw a preview at</source>
        <translation>Не задан размер для эскиза</translation>
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
    <name>OrvantaQT::NetworkImageLabel</name>
    <message>
        <location filename="../../images/network_image_label.cpp" line="+72"/>
        <source>No loader for pictures</source>
        <translation>Нет загрузчика изображений</translation>
    </message>
    <message>
        <location line="+97"/>
        <source>Not a valid address</source>
        <translation>Недопустимый адрес</translation>
    </message>
</context>
<context>
    <name>OrvantaQT::NotificationType</name>
    <message>
        <location filename="../../widgets/window/notification_type.cpp" line="+34"/>
        <source>Information</source>
        <translation>Информация</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Success</source>
        <translation>Успех</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Warning</source>
        <translation>Предупреждение</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Error</source>
        <translation>Ошибка</translation>
    </message>
</context>
<context>
    <name>OrvantaQT::NotificationWidget</name>
    <message>
        <location filename="../../widgets/window/notification_widget.cpp" line="+143"/>
        <location line="+1"/>
        <source>Close</source>
        <translation>Закрыть</translation>
    </message>
</context>
<context>
    <name>OrvantaQT::PopupMessage</name>
    <message>
        <location filename="../../widgets/window/popup_message.cpp" line="+78"/>
        <source>Close</source>
        <translation>Закрыть</translation>
    </message>
    <message>
        <location line="+144"/>
        <source>×%1</source>
        <translation>×%1</translation>
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
<context>
    <name>OrvantaQT::TableView</name>
    <message>
        <location filename="../../views/table_view.cpp" line="+202"/>
        <source>No items</source>
        <translation>Нет элементов</translation>
    </message>
</context>
<context>
    <name>OrvantaQT::TitleBar</name>
    <message>
        <location filename="../../widgets/window/title_bar.cpp" line="+108"/>
        <source>Minimize</source>
        <translation>Свернуть</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Close</source>
        <translation>Закрыть</translation>
    </message>
    <message>
        <location line="+186"/>
        <source>Restore</source>
        <translation>Восстановить</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Maximize</source>
        <translation>Развернуть</translation>
    </message>
</context>
<context>
    <name>OrvantaQT::ToolBar</name>
    <message>
        <location filename="../../widgets/navigation/tool_bar.cpp" line="+79"/>
        <location line="+1"/>
        <source>More</source>
        <translation>Ещё</translation>
    </message>
</context>
<context>
    <name>OrvantaQT::TwoButtons</name>
    <message>
        <location filename="../../widgets/navigation/two_buttons.cpp" line="+258"/>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Cancel</source>
        <translation>Отмена</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <location filename="../../qml/Orvanta/Controls/SearchField.qml" line="+36"/>
        <location line="+46"/>
        <source>Search</source>
        <translation>Поиск</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Clear search</source>
        <translation>Очистить поиск</translation>
    </message>
</context>
<context>
    <name>Toast</name>
    <message>
        <location filename="../../qml/Orvanta/Controls/Toast.qml" line="+269"/>
        <source>×%1</source>
        <translation>×%1</translation>
    </message>
    <message>
        <location line="+30"/>
        <source>Close</source>
        <translation>Закрыть</translation>
    </message>
</context>
</TS>
