# Base controls, colour-scheme variants, context-help labels. Files named
# *_rules.cpp are portable model code (also built natively); every other
# source here is the Windows side.
file(GLOB QV_CONTROLS_RULES CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*_rules.cpp)
file(GLOB QV_CONTROLS_ALL CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*.cpp)
list(APPEND QV_MODEL_SOURCES ${QV_CONTROLS_RULES})
if(QV_CONTROLS_RULES)
  list(REMOVE_ITEM QV_CONTROLS_ALL ${QV_CONTROLS_RULES})
endif()
list(APPEND QV_WIN_SOURCES ${QV_CONTROLS_ALL})
# Installed headers: what a host includes, and what those include.
list(APPEND QV_PUBLIC_HEADERS
  ${CMAKE_CURRENT_LIST_DIR}/base_buttons.h
  ${CMAKE_CURRENT_LIST_DIR}/base_edit.h
  ${CMAKE_CURRENT_LIST_DIR}/base_keys.h
  ${CMAKE_CURRENT_LIST_DIR}/base_lists.h
  ${CMAKE_CURRENT_LIST_DIR}/base_readonly.h
  ${CMAKE_CURRENT_LIST_DIR}/color.h
  ${CMAKE_CURRENT_LIST_DIR}/font_color.h
  ${CMAKE_CURRENT_LIST_DIR}/input_rules.h
  ${CMAKE_CURRENT_LIST_DIR}/prompt.h
  ${CMAKE_CURRENT_LIST_DIR}/rich_text.h
  ${CMAKE_CURRENT_LIST_DIR}/scroll_dialog.h
  ${CMAKE_CURRENT_LIST_DIR}/scroll_dialog_rules.h
  ${CMAKE_CURRENT_LIST_DIR}/script_buttons.h
  ${CMAKE_CURRENT_LIST_DIR}/static_text.h
)
