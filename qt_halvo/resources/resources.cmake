# Resources compiled into qt_halvo. Qt's generated code registers them when the shared
# library loads, so hosts see them without calling anything.

set(QT_HALVO_RESOURCE_DIR ${CMAKE_CURRENT_LIST_DIR})
set(QT_HALVO_TRANSLATIONS
    ${QT_HALVO_RESOURCE_DIR}/translations/qt_halvo_de.ts
    ${QT_HALVO_RESOURCE_DIR}/translations/qt_halvo_ru.ts)

# Catalogues are compiled at build time and reached as ":/translations/qt_halvo_<suffix>".
set_source_files_properties(${QT_HALVO_TRANSLATIONS} PROPERTIES OUTPUT_LOCATION ${CMAKE_CURRENT_BINARY_DIR}/translations)
qt5_add_translation(QT_HALVO_QM_FILES ${QT_HALVO_TRANSLATIONS})
set(_qt_halvo_qm_entries "")
foreach(_qm ${QT_HALVO_QM_FILES})
    get_filename_component(_qm_name ${_qm} NAME)
    string(APPEND _qt_halvo_qm_entries "        <file alias=\"${_qm_name}\">${_qm}</file>\n")
endforeach()
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/qt_halvo_translations.qrc.in
    "<RCC>\n    <qresource prefix=\"/translations\">\n${_qt_halvo_qm_entries}    </qresource>\n</RCC>\n")
configure_file(${CMAKE_CURRENT_BINARY_DIR}/qt_halvo_translations.qrc.in
               ${CMAKE_CURRENT_BINARY_DIR}/qt_halvo_translations.qrc COPYONLY)
qt5_add_resources(QT_HALVO_TRANSLATION_RESOURCES ${CMAKE_CURRENT_BINARY_DIR}/qt_halvo_translations.qrc)

qt5_add_resources(QT_HALVO_RESOURCES ${QT_HALVO_RESOURCE_DIR}/qt_halvo.qrc ${QT_HALVO_RESOURCE_DIR}/../qml/qml.qrc)

target_sources(qt_halvo PRIVATE ${QT_HALVO_RESOURCES} ${QT_HALVO_TRANSLATION_RESOURCES} ${QT_HALVO_QM_FILES})

# Refreshes the .ts sources from the code: cmake --build <dir> --target update_translations
# (lupdate needs the include path to see the classes in their namespace)
add_custom_target(update_translations
    COMMAND Qt5::lupdate -locations relative -no-obsolete -I ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/qt_halvo -ts ${QT_HALVO_TRANSLATIONS}
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    COMMENT "Updating the translation sources"
    VERBATIM)
