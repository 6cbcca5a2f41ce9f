# Auxiliary windows: splitter, line-numbered edit, search fields. Files named
# *_rules.cpp are portable model code (also built natively); every other
# source here is the Windows side.
file(GLOB QV_WINDOWS_RULES CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*_rules.cpp)
file(GLOB QV_WINDOWS_ALL CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*.cpp)
list(APPEND QV_MODEL_SOURCES ${QV_WINDOWS_RULES})
if(QV_WINDOWS_RULES)
  list(REMOVE_ITEM QV_WINDOWS_ALL ${QV_WINDOWS_RULES})
endif()
list(APPEND QV_WIN_SOURCES ${QV_WINDOWS_ALL})
# Installed headers: the window classes' headers, and the model headers that
# they include (named here one by one; the others stay private).
file(GLOB QV_WINDOWS_HEADERS CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*.h)
list(FILTER QV_WINDOWS_HEADERS EXCLUDE REGEX "_rules\\.h$")
list(APPEND QV_PUBLIC_HEADERS ${QV_WINDOWS_HEADERS})
