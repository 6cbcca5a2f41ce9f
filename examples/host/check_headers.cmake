# Every installed header, compiled alone in a host's strict build:
#  - as it is, after nothing else;
#  - after <windows.h> and <windowsx.h> (whose function-like macros
#    SubclassWindow, SelectFont ... collide with ordinary member names), with
#    WIN32_LEAN_AND_MEAN and NOMINMAX;
# both under -Wall -Wextra -Werror. A host that forgets UNICODE gets the
# library's own #error, not a link failure.
get_target_property(qv_includes Quorvel::quorvel INTERFACE_INCLUDE_DIRECTORIES)
file(GLOB_RECURSE qv_headers RELATIVE ${qv_includes} ${qv_includes}/quorvel/*.h)
if(NOT qv_headers)
  message(FATAL_ERROR "no Quorvel headers under ${qv_includes}")
endif()

set(plain_sources)
set(windowsx_sources)
foreach(header ${qv_headers})
  string(MAKE_C_IDENTIFIER ${header} name)
  file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/headers/plain/${name}.cpp "#include <${header}>\n")
  file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/headers/windowsx/${name}.cpp
       "#define WIN32_LEAN_AND_MEAN\n#define NOMINMAX\n#include <windows.h>\n#include <windowsx.h>\n#include <${header}>\n")
  list(APPEND plain_sources ${CMAKE_CURRENT_BINARY_DIR}/headers/plain/${name}.cpp)
  list(APPEND windowsx_sources ${CMAKE_CURRENT_BINARY_DIR}/headers/windowsx/${name}.cpp)
endforeach()
foreach(variant plain windowsx)
  add_library(headers_${variant} OBJECT ${${variant}_sources})
  target_link_libraries(headers_${variant} PRIVATE Quorvel::quorvel)
  target_compile_options(headers_${variant} PRIVATE -Wall -Wextra -Werror)
endforeach()

# Without UNICODE: the compiler must stop with the library's message.
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/headers/no_unicode.cpp "#include <quorvel/masks/numeric.h>\n")
add_test(NAME host.headers_without_unicode
         COMMAND ${CMAKE_CXX_COMPILER} -std=c++20 -fsyntax-only -I${qv_includes}
                 ${CMAKE_CURRENT_BINARY_DIR}/headers/no_unicode.cpp)
set_tests_properties(host.headers_without_unicode PROPERTIES
                     PASS_REGULAR_EXPRESSION "Quorvel needs UNICODE and _UNICODE defined")
