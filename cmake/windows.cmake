# Windows build (MinGW-w64 cross): quorvel.dll, tools, gallery, Windows tests.
enable_language(RC)

add_compile_definitions(UNICODE _UNICODE __USE_MINGW_ANSI_STDIO=1 NOMINMAX
                        _WIN32_WINNT=0x0601 WINVER=0x0601 _WIN32_IE=0x0800)
add_compile_options(-Wall -Wextra -Wno-unused-parameter -Wno-cast-function-type)
# No MinGW runtime DLLs next to our binaries: they must run on a bare Windows.
add_link_options(-static -static-libgcc -static-libstdc++)

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${QV_BINARY_ROOT}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${QV_BINARY_ROOT}/bin)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${QV_BINARY_ROOT}/lib)

# The Wine launcher, with this build's own prefix.
set(QV_WINEPREFIX ${QV_BINARY_ROOT}/wineprefix)
configure_file(${QV_ROOT}/tools/winrun.sh.in ${QV_BINARY_ROOT}/winrun.sh @ONLY)
set(CMAKE_CROSSCOMPILING_EMULATOR ${QV_BINARY_ROOT}/winrun.sh)

set(QV_SYSTEM_LIBS comctl32 comdlg32 shell32 shlwapi ole32 oleaut32 uuid gdi32 user32
                   advapi32 msvfw32 windowscodecs msimg32)

add_library(quorvel SHARED ${QV_MODEL_SOURCES} ${QV_WIN_SOURCES})
if(EXISTS ${QV_ROOT}/src/resources/quorvel.rc)
  target_sources(quorvel PRIVATE ${QV_ROOT}/src/resources/quorvel.rc)
endif()
target_include_directories(quorvel PUBLIC ${QV_ROOT}/src
                                   PRIVATE ${QV_ROOT}/src/resources)
target_compile_definitions(quorvel PRIVATE QV_BUILDING_DLL)
target_link_libraries(quorvel PRIVATE ${QV_SYSTEM_LIBS})
set_target_properties(quorvel PROPERTIES PREFIX "" IMPORT_PREFIX "" IMPORT_SUFFIX ".lib")
file(GLOB QV_BITMAPS CONFIGURE_DEPENDS ${QV_ROOT}/src/resources/bitmaps/*.bmp)
set_source_files_properties(${QV_ROOT}/src/resources/quorvel.rc PROPERTIES
  OBJECT_DEPENDS "${QV_ROOT}/src/resources/resource.h;${QV_BITMAPS}")

# GoogleTest from the Debian sources, cross-compiled.
set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
add_subdirectory(/usr/src/googletest ${QV_BINARY_ROOT}/googletest EXCLUDE_FROM_ALL)

# Shared fixture code of the Windows tests (host window, message pump, recorders).
file(GLOB QV_WIN_TEST_SUPPORT CONFIGURE_DEPENDS ${QV_ROOT}/tests/win/support/*.cpp
                                                ${QV_ROOT}/tests/win/support/*.rc)
add_library(qv_win_test_support STATIC ${QV_WIN_TEST_SUPPORT})
target_link_libraries(qv_win_test_support PUBLIC quorvel gtest ${QV_SYSTEM_LIBS})
target_include_directories(qv_win_test_support PUBLIC ${QV_ROOT}/tests/win)

# One test executable (and one ctest entry) per file: each Wine process start
# costs a few hundred milliseconds, so test cases are not split into processes.
file(GLOB QV_WIN_TESTS CONFIGURE_DEPENDS ${QV_ROOT}/tests/win/*_test.cpp)
foreach(src ${QV_WIN_TESTS})
  get_filename_component(name ${src} NAME_WE)
  set(extra)
  if(EXISTS ${QV_ROOT}/tests/win/${name}.rc)
    set(extra ${QV_ROOT}/tests/win/${name}.rc)
  endif()
  add_executable(qvw_${name} ${src} ${extra})
  target_link_libraries(qvw_${name} PRIVATE qv_win_test_support gtest_main)
  add_test(NAME wine.${name} COMMAND qvw_${name})
  set_tests_properties(wine.${name} PROPERTIES TIMEOUT 300)
endforeach()

# Gallery: every control on screen; --screenshot DIR writes one PNG per page.
file(GLOB QV_GALLERY_SOURCES CONFIGURE_DEPENDS ${QV_ROOT}/examples/gallery/*.cpp
                                               ${QV_ROOT}/examples/gallery/*.rc)
if(QV_GALLERY_SOURCES)
  add_executable(gallery WIN32 ${QV_GALLERY_SOURCES})
  target_link_libraries(gallery PRIVATE quorvel ${QV_SYSTEM_LIBS})
  target_include_directories(gallery PRIVATE ${QV_ROOT}/src/resources)
  target_link_options(gallery PRIVATE -municode)
endif()

# Command-line tools for configuration authors.
file(GLOB QV_TOOLS CONFIGURE_DEPENDS ${QV_ROOT}/tools/*/main.cpp)
foreach(src ${QV_TOOLS})
  get_filename_component(dir ${src} DIRECTORY)
  get_filename_component(name ${dir} NAME)
  file(GLOB tool_sources CONFIGURE_DEPENDS ${dir}/*.cpp)
  add_executable(${name} ${tool_sources})
  target_link_libraries(${name} PRIVATE quorvel)
  target_link_options(${name} PRIVATE -municode)
endforeach()

# The pattern tool as configuration authors run it: arguments, pipes, UTF-8.
if(TARGET quorvel-pattern)
  add_test(NAME wine.quorvel-pattern
           COMMAND sh ${QV_ROOT}/tests/tools/quorvel-pattern.sh ${QV_BINARY_ROOT}/winrun.sh
                   $<TARGET_FILE:quorvel-pattern>)
  set_tests_properties(wine.quorvel-pattern PROPERTIES TIMEOUT 120)
endif()

# Timing harnesses run under Wine by ./build.sh bench (not tests).
file(GLOB QV_WIN_BENCHES CONFIGURE_DEPENDS ${QV_ROOT}/bench/win/*_bench.cpp)
foreach(src ${QV_WIN_BENCHES})
  get_filename_component(name ${src} NAME_WE)
  add_executable(qvw_${name} ${src})
  target_link_libraries(qvw_${name} PRIVATE quorvel ${QV_SYSTEM_LIBS})
endforeach()
