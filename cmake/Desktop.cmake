# What makes the program known to the desktop: entry, description, icons, the type of its databases. All of it
# carries one id. Nobody can own its domain, which is set aside for networks of one's own.
set(desktop_id arpa.home.detailstyles)
set(packaging ${CMAKE_SOURCE_DIR}/packaging)
set(desktop ${CMAKE_CURRENT_BINARY_DIR}/desktop)
set(DETAILSTYLES_SCREENSHOTS_URL https://detailstyles.home.arpa/screenshots CACHE STRING
    "Where the folder share/doc/detailstyles/screenshots is served, for shops that show the metainfo")

install(FILES ${packaging}/${desktop_id}.desktop COMPONENT program DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${packaging}/${desktop_id}.mime.xml COMPONENT program RENAME ${desktop_id}.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)

# install_icon(CONTEXT NAME FILE): the drawing, and pictures of it for places that show no drawings.
add_executable(render_icon EXCLUDE_FROM_ALL ${CMAKE_SOURCE_DIR}/tools/RenderIcon.cpp)
target_link_libraries(render_icon PRIVATE Qt6::Svg)
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
function(install_icon context name file)
    install(FILES ${file} COMPONENT program RENAME ${name}.svg DESTINATION ${icons}/scalable/${context})
    foreach(size 48 64 128 256)
        set(picture ${desktop}/${size}/${name}.png)
        add_custom_command(OUTPUT ${picture} COMMAND render_icon ${file} ${size} ${picture} DEPENDS ${file} VERBATIM)
        install(FILES ${picture} COMPONENT program DESTINATION ${icons}/${size}x${size}/${context})
        list(APPEND pictures ${picture})
    endforeach()
    set(icon_pictures ${icon_pictures} ${pictures} PARENT_SCOPE)
endfunction()
install_icon(apps ${desktop_id} ${CMAKE_SOURCE_DIR}/resources/appicon.svg)
install_icon(mimetypes application-x-dsdb ${packaging}/icons/database.svg)
install(FILES ${packaging}/icons/symbolic.svg COMPONENT program RENAME ${desktop_id}-symbolic.svg
    DESTINATION ${icons}/symbolic/apps)

# install_screenshot(NAME CAPTION GERMAN ARGUMENT...): a picture that the program paints of its window when it
# edits the samples.
set(samples ${desktop}/samples)
add_custom_command(OUTPUT ${samples}/standard.dsdb VERBATIM DEPENDS detailstyles
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${samples} COMMAND detailstyles samples ${samples})
function(install_screenshot name caption german)
    set(picture ${desktop}/screenshots/${name}.png)
    add_custom_command(OUTPUT ${picture} VERBATIM DEPENDS ${samples}/standard.dsdb
        COMMAND ${CMAKE_COMMAND} -E make_directory ${desktop}/screenshots
        COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen:configfile=${CMAKE_SOURCE_DIR}/tests/support/screen.json
            XDG_CONFIG_HOME=${desktop}/config $<TARGET_FILE:detailstyles> --data ${samples} edit ${ARGN}
            --size 1880x1056 --screenshot ${picture} --overwrite)
    install(FILES ${picture} COMPONENT program DESTINATION ${CMAKE_INSTALL_DOCDIR}/screenshots)
    string(CONCAT screenshot
        "    <screenshot>\n"
        "      <caption>${caption}</caption>\n"
        "      <caption xml:lang=\"de\">${german}</caption>\n"
        "      <image type=\"source\" width=\"1880\" height=\"1056\">${DETAILSTYLES_SCREENSHOTS_URL}/${name}.png</image>\n"
        "    </screenshot>\n")
    if(NOT screenshots)
        string(REPLACE "<screenshot>" "<screenshot type=\"default\">" screenshot "${screenshot}")
    endif()
    set(screenshots "${screenshots}${screenshot}" PARENT_SCOPE)
    set(screenshot_pictures ${screenshot_pictures} ${picture} PARENT_SCOPE)
endfunction()
install_screenshot(style "A detail style with its views and its title"
    "Ein Detailstil mit seinen Ansichten und seinem Titel" --style "HB beam 1:15")
install_screenshot(post "The styles of a post, with what they use below them"
    "Die Stile einer Stütze, darunter, was sie verwenden" --style "HB post 1:15")
configure_file(${packaging}/${desktop_id}.metainfo.xml.in ${desktop}/${desktop_id}.metainfo.xml @ONLY)
install(FILES ${desktop}/${desktop_id}.metainfo.xml COMPONENT program DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)

add_custom_target(desktop DEPENDS ${icon_pictures} ${screenshot_pictures})
