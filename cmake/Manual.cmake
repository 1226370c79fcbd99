# The manual, which the program writes itself, and what shells need to ask the program for completions.
set(manual ${CMAKE_CURRENT_BINARY_DIR}/manual)
file(MAKE_DIRECTORY ${manual})
# install_manual(PAGE SECTION WHAT FOLDER LOCALE)
function(install_manual page section what folder locale)
    set(file ${manual}/${locale}/${page}.${section})
    file(MAKE_DIRECTORY ${manual}/${locale})
    add_custom_command(OUTPUT ${file}.gz DEPENDS detailstyles ${CMAKE_SOURCE_DIR}/resources/prompts/de.sentences.tsv
            ${CMAKE_SOURCE_DIR}/resources/prompts/de.tsv ${CMAKE_SOURCE_DIR}/resources/prompts/en.tsv
        COMMAND ${CMAKE_COMMAND} -E env LC_ALL=${locale}.UTF-8 XDG_CONFIG_HOME=${manual} $<TARGET_FILE:detailstyles> manual ${what} > ${file}
        COMMAND gzip -9nf ${file})
    install(FILES ${file}.gz COMPONENT program DESTINATION ${CMAKE_INSTALL_MANDIR}/${folder}man${section})
    set(manual_pages ${manual_pages} ${file}.gz PARENT_SCOPE)
endfunction()
install_manual(detailstyles 1 program "" C)
install_manual(dsdb 5 dsdb "" C)
install_manual(detailstyles 1 program de/ de_DE)
install_manual(dsdb 5 dsdb de/ de_DE)
add_custom_target(manual DEPENDS ${manual_pages})

set(completion ${packaging}/completion)
install(FILES ${completion}/detailstyles.bash COMPONENT program RENAME detailstyles
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES ${completion}/_detailstyles COMPONENT program DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
install(FILES ${completion}/detailstyles.fish COMPONENT program
    DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
