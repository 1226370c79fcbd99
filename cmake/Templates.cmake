# The dialog and page templates: every resources/templates/<number>.ui is compiled by uic, and a generated
# table makes a template by its number.
file(GLOB forms CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/resources/templates/*.ui)
set(generated ${CMAKE_BINARY_DIR}/templates)
set(headers)
set(includes "")
set(cases "")
foreach(form ${forms})
    get_filename_component(number ${form} NAME_WE)
    set(header ${generated}/ui_${number}.h)
    add_custom_command(OUTPUT ${header} COMMAND Qt6::uic -o ${header} ${form} DEPENDS ${form} VERBATIM)
    list(APPEND headers ${header})
    string(APPEND includes "#include \"ui_${number}.h\"\n")
    string(APPEND cases "    case ${number}: Ui::Template${number}().setupUi(static_cast<decltype(formOf(&Ui::Template${number}::setupUi))>(window)); return true;\n")
endforeach()
file(CONFIGURE OUTPUT ${generated}/templates/Templates.cpp @ONLY CONTENT [=[
#include "templates/Templates.h"

@includes@
namespace {

template <typename Form, typename Window>
Window* formOf(void (Form::*)(Window*));

} // namespace

bool Templates::setUp(int number, QWidget* window) {
    switch (number) {
@cases@    default: return false;
    }
}
]=])
file(CONFIGURE OUTPUT ${generated}/templates/Templates.h @ONLY CONTENT [=[
#pragma once

class QWidget;

namespace Templates {

/// Fills an empty window with the controls of a template. Returns false when there is no such template.
bool setUp(int number, QWidget* window);

} // namespace Templates
]=])
add_library(templates STATIC ${generated}/templates/Templates.cpp ${headers})
target_include_directories(templates PUBLIC ${generated})
target_link_libraries(templates PUBLIC controls)
target_compile_options(templates PRIVATE -Wno-shadow -Wno-conversion)
