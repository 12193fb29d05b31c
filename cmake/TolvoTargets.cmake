# What all our targets have in common: the language, the warnings, the sanitizers and where programs land.
find_package(Threads REQUIRED)
find_package(PkgConfig REQUIRED)

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(TOLVO_CCACHE ccache)
if(TOLVO_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${TOLVO_CCACHE})
endif()

add_library(tolvo_options INTERFACE)
target_compile_features(tolvo_options INTERFACE cxx_std_23)
target_include_directories(tolvo_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(tolvo_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Wswitch -Wshadow)
if(TOLVO_WARNINGS_AS_ERRORS)
  target_compile_options(tolvo_options INTERFACE -Werror)
endif()
if(TOLVO_SANITIZERS)
  add_compile_options(-fsanitize=${TOLVO_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${TOLVO_SANITIZERS})
endif()
if(CMAKE_BUILD_TYPE STREQUAL "Debug")
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()
set(CMAKE_CXX_EXTENSIONS OFF)

# tolvo_room(NAME SOURCES ... LINKS ...): one room of the house as a library. What it may include is what it links.
function(tolvo_room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  if(ROOM_SOURCES)
    add_library(${name} STATIC ${ROOM_SOURCES})
    target_link_libraries(${name} PUBLIC tolvo_options ${ROOM_LINKS} PRIVATE ${ROOM_PRIVATE_LINKS})
  else()
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE tolvo_options ${ROOM_LINKS})
  endif()
endfunction()

# tolvo_program(NAME SOURCES ... LINKS ...): a program of ours, in build/PRESET/bin. "programs" builds all of them.
add_custom_target(programs)
function(tolvo_program name)
  cmake_parse_arguments(PROGRAM "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${PROGRAM_SOURCES})
  target_link_libraries(${name} PRIVATE tolvo_options ${PROGRAM_LINKS})
  add_dependencies(programs ${name})
endfunction()
