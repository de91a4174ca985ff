# Options of every target: warnings as errors, sanitizers, coverage, the version.

add_library(kelvara_options INTERFACE)
target_include_directories(kelvara_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_definitions(kelvara_options INTERFACE
  KELVARA_VERSION_MAJOR=${PROJECT_VERSION_MAJOR}
  KELVARA_VERSION_MINOR=${PROJECT_VERSION_MINOR}
  KELVARA_VERSION_REVISION=${PROJECT_VERSION_PATCH})
if(MSVC)
  target_compile_options(kelvara_options INTERFACE /W4 /WX /utf-8)
else()
  target_compile_options(kelvara_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # This compiler mistakes some concatenations of std::string for overlapping copies.
  target_compile_options(kelvara_options INTERFACE -Wno-restrict)
endif()
if(KELVARA_SANITIZE)
  target_compile_options(kelvara_options INTERFACE
    -fsanitize=${KELVARA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(kelvara_options INTERFACE -fsanitize=${KELVARA_SANITIZE})
endif()
if(KELVARA_COVERAGE)
  target_compile_options(kelvara_options INTERFACE --coverage -fprofile-update=atomic)
  target_link_options(kelvara_options INTERFACE --coverage)
endif()

find_program(KELVARA_CCACHE ccache)
if(KELVARA_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${KELVARA_CCACHE})
endif()

# Adds a manifest and version information to a program for Windows; with ICON, also Kelvara's icon.
function(kelvara_windows_resources target description)
  if(MINGW)
    # Without symbols and without the time of the build: the same sources give the same program.
    target_link_options(${target} PRIVATE -s -Wl,--no-insert-timestamp)
  endif()
  set(folder ${PROJECT_SOURCE_DIR}/packaging/windows)
  set(resources ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
  set(KELVARA_MANIFEST ${folder}/program.manifest)
  set(KELVARA_PROGRAM ${target})
  set(KELVARA_DESCRIPTION ${description})
  set(KELVARA_ICON "")
  if("ICON" IN_LIST ARGN)
    find_package(Python3 REQUIRED COMPONENTS Interpreter)
    set(icon ${CMAKE_CURRENT_BINARY_DIR}/kelvara.ico)
    file(GLOB pictures CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/help/icon/kelvara-*.png)
    add_custom_command(OUTPUT ${icon}
      COMMAND Python3::Interpreter -B ${folder}/make_icon.py ${icon} ${pictures}
      DEPENDS ${folder}/make_icon.py ${pictures})
    set(KELVARA_ICON "IDI_ICON1 ICON \"${icon}\"")
  endif()
  configure_file(${folder}/program.rc.in ${resources} @ONLY)
  target_sources(${target} PRIVATE ${resources})
  set_source_files_properties(${resources} PROPERTIES OBJECT_DEPENDS "${KELVARA_MANIFEST};${icon}")
endfunction()
