# Windows build (MinGW-w64 cross): quorvel.dll with its import library,
# headers and CMake package; at the top level also the tools, the gallery and
# the Windows tests.
enable_language(RC)

# Settings of this project's own targets (directory scope: a host that takes
# the project in as a subproject keeps its own). What a consumer needs travels
# with the quorvel target instead.
add_compile_definitions(UNICODE _UNICODE __USE_MINGW_ANSI_STDIO=1 NOMINMAX
                        _WIN32_WINNT=0x0601 WINVER=0x0601 _WIN32_IE=0x0800)
add_compile_options(-Wall -Wextra -Wno-unused-parameter -Wno-cast-function-type)
# No MinGW runtime DLLs next to our binaries: they must run on a bare Windows.
add_link_options(-static -static-libgcc -static-libstdc++)

if(PROJECT_IS_TOP_LEVEL)
  set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${QV_BINARY_ROOT}/bin)
  set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${QV_BINARY_ROOT}/bin)
  set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${QV_BINARY_ROOT}/lib)
endif()

set(QV_SYSTEM_LIBS comctl32 comdlg32 shell32 shlwapi ole32 oleaut32 uuid gdi32 user32
                   advapi32 msvfw32 windowscodecs msimg32 winspool oleacc)

# ---- The library ------------------------------------------------------------
add_library(quorvel SHARED ${QV_MODEL_SOURCES} ${QV_WIN_SOURCES} ${QV_ROOT}/src/resources/quorvel.rc)
add_library(Quorvel::quorvel ALIAS quorvel)
# Hosts include <quorvel/masks/numeric.h>: the folder above quorvel/ is the
# include folder, in the source tree and where the package is installed.
target_include_directories(quorvel PUBLIC $<BUILD_INTERFACE:${QV_ROOT}/src> $<INSTALL_INTERFACE:include>
                                   PRIVATE ${QV_ROOT}/src/resources)
target_compile_definitions(quorvel PRIVATE QV_BUILDING_DLL INTERFACE UNICODE _UNICODE)
target_compile_features(quorvel PUBLIC cxx_std_20)
# The headers' inline functions call into these; the DLL itself uses the rest.
target_link_libraries(quorvel PRIVATE ${QV_SYSTEM_LIBS} INTERFACE user32 gdi32 comctl32 ole32 oleaut32)
set_target_properties(quorvel PROPERTIES PREFIX "" IMPORT_PREFIX "" IMPORT_SUFFIX ".lib" EXPORT_NAME quorvel)
file(GLOB QV_BITMAPS CONFIGURE_DEPENDS ${QV_ROOT}/src/resources/bitmaps/*.bmp)
set_source_files_properties(${QV_ROOT}/src/resources/quorvel.rc PROPERTIES
  OBJECT_DEPENDS "${QV_ROOT}/src/resources/resource.h;${QV_BITMAPS}")

# ---- Install rules and the relocatable CMake package --------------------------
#   bin/quorvel.dll  lib/quorvel.lib  include/quorvel/<family>/*.h
#   lib/cmake/Quorvel/QuorvelConfig.cmake (+ version, targets)
if(QV_INSTALL)
  include(CMakePackageConfigHelpers)
  install(TARGETS quorvel EXPORT QuorvelTargets
          RUNTIME DESTINATION bin LIBRARY DESTINATION lib ARCHIVE DESTINATION lib)
  foreach(header ${QV_PUBLIC_HEADERS})
    file(RELATIVE_PATH relative ${QV_ROOT}/src ${header})
    get_filename_component(folder ${relative} DIRECTORY)
    install(FILES ${header} DESTINATION include/${folder})
  endforeach()
  install(EXPORT QuorvelTargets NAMESPACE Quorvel:: DESTINATION lib/cmake/Quorvel)
  configure_package_config_file(${QV_ROOT}/cmake/QuorvelConfig.cmake.in ${QV_BINARY_ROOT}/QuorvelConfig.cmake
                                INSTALL_DESTINATION lib/cmake/Quorvel)
  # 0.x: a new minor version may change the classes' layout.
  write_basic_package_version_file(${QV_BINARY_ROOT}/QuorvelConfigVersion.cmake
                                   COMPATIBILITY SameMinorVersion)
  install(FILES ${QV_BINARY_ROOT}/QuorvelConfig.cmake ${QV_BINARY_ROOT}/QuorvelConfigVersion.cmake
          DESTINATION lib/cmake/Quorvel)
endif()

if(QV_BUILD_TESTS OR QV_BUILD_GALLERY OR QV_BUILD_TOOLS OR QV_BUILD_BENCHMARKS)
  # The Wine launcher, with this build's own prefix.
  set(QV_WINEPREFIX ${QV_BINARY_ROOT}/wineprefix)
  configure_file(${QV_ROOT}/tools/winrun.sh.in ${QV_BINARY_ROOT}/winrun.sh @ONLY)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${QV_BINARY_ROOT}/winrun.sh)
endif()

# ---- Windows tests -----------------------------------------------------------
if(QV_BUILD_TESTS)
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
  # Screen readers and DPI: one executable each over every family, built
  # from the files of its folder (one file per family group). The DPI tests
  # run three times, at 96 DPI in the common prefix and at 144 and 192 DPI
  # in prefixes of their own.
  foreach(group accessibility dpi)
    file(GLOB QV_GROUP_TESTS CONFIGURE_DEPENDS ${QV_ROOT}/tests/win/${group}/*.cpp)
    if(QV_GROUP_TESTS)
      add_executable(qvw_${group}_test ${QV_GROUP_TESTS})
      target_link_libraries(qvw_${group}_test PRIVATE qv_win_test_support gtest_main)
    endif()
  endforeach()
  if(TARGET qvw_accessibility_test)
    add_test(NAME wine.accessibility_test COMMAND qvw_accessibility_test)
    set_tests_properties(wine.accessibility_test PROPERTIES TIMEOUT 300)
  endif()
  if(TARGET qvw_dpi_test)
    foreach(dpi 96 144 192)
      add_test(NAME wine.dpi_test_${dpi} COMMAND qvw_dpi_test)
      set_tests_properties(wine.dpi_test_${dpi} PROPERTIES TIMEOUT 300)
      if(NOT dpi EQUAL 96)
        set_tests_properties(wine.dpi_test_${dpi} PROPERTIES
          ENVIRONMENT "QV_WINEPREFIX=${QV_BINARY_ROOT}/wineprefix-dpi${dpi};QV_DPI=${dpi}")
      endif()
    endforeach()
  endif()
  # Printing to a real printer: a CUPS PDF queue that the script sets up when
  # the machine has CUPS (skipped otherwise), the PDF read back with poppler.
  if(TEST wine.print_list_object_test)
    add_test(NAME wine.print_to_pdf
             COMMAND sh ${QV_ROOT}/tests/win/print_to_pdf.sh ${QV_BINARY_ROOT}/winrun.sh
                     $<TARGET_FILE:qvw_print_list_object_test>)
    set_tests_properties(wine.print_to_pdf PROPERTIES TIMEOUT 240 SKIP_RETURN_CODE 77)
  endif()
  # The soak fills the handle tables to count what is left, many times over:
  # it takes minutes, not seconds.
  if(TEST wine.soak_test)
    set_tests_properties(wine.soak_test PROPERTIES TIMEOUT 900)
  endif()

  # A host application, built the two ways a host takes the library in and run
  # under Wine: against the package installed into a scratch prefix (with every
  # installed header compiled alone), and with the project as a subproject.
  if(QV_INSTALL)
    set(host_prefix ${QV_BINARY_ROOT}/host/prefix)
    add_test(NAME host.install
             COMMAND sh -c "rm -rf '${host_prefix}' && '${CMAKE_COMMAND}' --install '${QV_BINARY_ROOT}' --prefix '${host_prefix}'")
    set_tests_properties(host.install PROPERTIES FIXTURES_SETUP qv_host_prefix)
    set(host_options -DCMAKE_TOOLCHAIN_FILE=${QV_ROOT}/cmake/mingw-w64.cmake -DCMAKE_BUILD_TYPE=Release
                     -DCMAKE_CROSSCOMPILING_EMULATOR=${QV_BINARY_ROOT}/winrun.sh)
    add_test(NAME host.package
             COMMAND ${CMAKE_CTEST_COMMAND} --build-and-test ${QV_ROOT}/examples/host ${QV_BINARY_ROOT}/host/package
                     --build-generator ${CMAKE_GENERATOR} --build-noclean
                     --build-options ${host_options} -DCMAKE_PREFIX_PATH=${host_prefix} -DQV_HOST_CHECK_HEADERS=ON
                     --test-command ${CMAKE_CTEST_COMMAND} --output-on-failure)
    set_tests_properties(host.package PROPERTIES FIXTURES_REQUIRED qv_host_prefix TIMEOUT 900)
    add_test(NAME host.subproject
             COMMAND ${CMAKE_CTEST_COMMAND} --build-and-test ${QV_ROOT}/examples/host ${QV_BINARY_ROOT}/host/subproject
                     --build-generator ${CMAKE_GENERATOR} --build-noclean
                     --build-options ${host_options} -DQUORVEL_SOURCE_DIR=${QV_ROOT}
                     --test-command ${CMAKE_CTEST_COMMAND} --output-on-failure)
    set_tests_properties(host.subproject PROPERTIES TIMEOUT 900)
  endif()
endif()

# ---- Gallery: every control on screen; --screenshot DIR writes one PNG per page.
if(QV_BUILD_GALLERY)
  file(GLOB QV_GALLERY_SOURCES CONFIGURE_DEPENDS ${QV_ROOT}/examples/gallery/*.cpp
                                                 ${QV_ROOT}/examples/gallery/*.rc)
  add_executable(gallery WIN32 ${QV_GALLERY_SOURCES})
  target_link_libraries(gallery PRIVATE quorvel ${QV_SYSTEM_LIBS})
  target_include_directories(gallery PRIVATE ${QV_ROOT}/src/resources)
  target_link_options(gallery PRIVATE -municode)
endif()

# ---- Command-line tools for configuration authors.
if(QV_BUILD_TOOLS)
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
  if(QV_BUILD_TESTS AND TARGET quorvel-pattern)
    add_test(NAME wine.quorvel-pattern
             COMMAND sh ${QV_ROOT}/tests/tools/quorvel-pattern.sh ${QV_BINARY_ROOT}/winrun.sh
                     $<TARGET_FILE:quorvel-pattern>)
    set_tests_properties(wine.quorvel-pattern PROPERTIES TIMEOUT 120)
  endif()
endif()

# ---- Timing harnesses run under Wine by ./build.sh bench (not tests).
if(QV_BUILD_BENCHMARKS)
  file(GLOB QV_WIN_BENCHES CONFIGURE_DEPENDS ${QV_ROOT}/bench/win/*_bench.cpp)
  foreach(src ${QV_WIN_BENCHES})
    get_filename_component(name ${src} NAME_WE)
    add_executable(qvw_${name} ${src})
    target_link_libraries(qvw_${name} PRIVATE quorvel ${QV_SYSTEM_LIBS})
  endforeach()
endif()
