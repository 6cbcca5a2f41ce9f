# The value-added control. Files named
# *_rules.cpp are portable model code (also built natively); every other
# source here is the Windows side.
file(GLOB QV_VALUEADDED_RULES CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*_rules.cpp)
file(GLOB QV_VALUEADDED_ALL CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*.cpp)
list(APPEND QV_MODEL_SOURCES ${QV_VALUEADDED_RULES})
if(QV_VALUEADDED_RULES)
  list(REMOVE_ITEM QV_VALUEADDED_ALL ${QV_VALUEADDED_RULES})
endif()
list(APPEND QV_WIN_SOURCES ${QV_VALUEADDED_ALL})
# Installed headers: the window classes' headers, and the model headers that
# they include (named here one by one; the others stay private).
file(GLOB QV_VALUEADDED_HEADERS CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*.h)
list(FILTER QV_VALUEADDED_HEADERS EXCLUDE REGEX "_rules\\.h$")
list(APPEND QV_PUBLIC_HEADERS ${QV_VALUEADDED_HEADERS})
