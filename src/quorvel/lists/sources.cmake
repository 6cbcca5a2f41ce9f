# Lists: the report list with typed rows, its sort header, the print-list
# interface and the built-in print-list object. Files named
# *_rules.cpp are portable model code (also built natively); every other
# source here is the Windows side.
file(GLOB QV_LISTS_RULES CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*_rules.cpp)
file(GLOB QV_LISTS_ALL CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*.cpp)
list(APPEND QV_MODEL_SOURCES ${QV_LISTS_RULES})
if(QV_LISTS_RULES)
  list(REMOVE_ITEM QV_LISTS_ALL ${QV_LISTS_RULES})
endif()
list(APPEND QV_WIN_SOURCES ${QV_LISTS_ALL})
# Installed headers: the window classes' headers, and the model headers that
# they include (named here one by one; the others stay private).
file(GLOB QV_LISTS_HEADERS CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*.h)
list(FILTER QV_LISTS_HEADERS EXCLUDE REGEX "_rules\\.h$")
list(APPEND QV_PUBLIC_HEADERS ${QV_LISTS_HEADERS})
