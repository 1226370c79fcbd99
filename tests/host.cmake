# Installs the module into an empty folder, builds the example host against that package alone, and runs it
# on sample databases.
include(${CMAKE_CURRENT_LIST_DIR}/support/Run.cmake)
file(REMOVE_RECURSE ${WORK})
# As after building the program alone.
file(GLOB built ${BUILD}/src/libdetailstyles.so*)
if(built)
    file(REMOVE ${built})
endif()
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/prefix --component sdk)
run(${CMAKE_COMMAND} -S ${SOURCE}/examples/host -B ${WORK}/build -G Ninja -DCMAKE_BUILD_TYPE=Debug
    -DCMAKE_PREFIX_PATH=${WORK}/prefix -DCMAKE_CXX_FLAGS=${CXX_FLAGS})
run(${CMAKE_COMMAND} --build ${WORK}/build)
run(${PROGRAM} samples ${WORK}/data/detailstyles)
set(ENV{XDG_DATA_HOME} ${WORK}/data)
set(ENV{XDG_CONFIG_HOME} ${WORK}/config)
set(ENV{XDG_RUNTIME_DIR} ${WORK}/runtime)
file(MAKE_DIRECTORY ${WORK}/runtime)
file(CHMOD ${WORK}/runtime PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
# Seen from outside: the ways out, the reload flags, and the results of Use for styles of an add-in and of one's
# own, and the view request that was chosen.
set(addin "Shop fabrication, imperial")
run(${WORK}/build/host OK --at "Standard/${addin}/Fittings/Plate, shop" Use
    --at "User/User/Hallberg: posts and beams/HB beam, long, 1:10" Use Cancel --request 40)
set(left "applied 0\nreload 1\ndrop view requests 0\n")
set(used "result 1\napplied 0\nreload 0\ndrop view requests 0\n")
set(expected "section Detail styles\nresult 1\n${left}"
    "${used}used 2 1 of ${addin}\nadd-in number 1\n${used}used 1 3 of User\nresult 2\n${left}view request 40 of 1, 0\n"
    "add-ins 3\nStandard may be edited 0\nUser may be edited 1\n")
list(JOIN expected "" expected)
if(NOT output STREQUAL expected)
    message(FATAL_ERROR "The host printed:\n${output}instead of:\n${expected}")
endif()

# Every header that is installed stands on its own.
file(GLOB_RECURSE headers ${WORK}/prefix/include/detailstyles/*.h)
foreach(header ${headers})
    string(MD5 name ${header})
    file(WRITE ${WORK}/alone/${name}.cpp "#include \"${header}\"\n")
    list(APPEND sources ${name}.cpp)
endforeach()
list(JOIN sources " " sources)
file(WRITE ${WORK}/alone/CMakeLists.txt "cmake_minimum_required(VERSION 3.25)
project(HeadersAlone LANGUAGES CXX)
set(CMAKE_CXX_STANDARD 20)
find_package(DetailStyles REQUIRED)
add_library(alone OBJECT ${sources})
target_link_libraries(alone PRIVATE DetailStyles::detailstyles)
")
run(${CMAKE_COMMAND} -S ${WORK}/alone -B ${WORK}/alone/build -G Ninja -DCMAKE_PREFIX_PATH=${WORK}/prefix)
run(${CMAKE_COMMAND} --build ${WORK}/alone/build)

# The module shows what is listed, no more and no less. Inline functions show or not as the compiler likes.
find_program(NM nm REQUIRED)
file(GLOB_RECURSE library ${WORK}/prefix/*/libdetailstyles.so)
run(${NM} -DC --defined-only ${library})
string(REGEX MATCHALL "[0-9a-f]+ [TDBR] [^\n]*" lines "${output}")
list(TRANSFORM lines REPLACE "^[0-9a-f]+ . " "")
list(FILTER lines EXCLUDE REGEX "^_|^typeinfo|^vtable")
list(SORT lines)
list(REMOVE_DUPLICATES lines)
list(JOIN lines "\n" shown)
file(READ ${SOURCE}/src/exported-symbols.txt listed)
if(NOT "${shown}\n" STREQUAL "${listed}")
    file(WRITE ${WORK}/exported-symbols.txt "${shown}\n")
    message(FATAL_ERROR "src/exported-symbols.txt is not what the module shows:\n${shown}")
endif()
