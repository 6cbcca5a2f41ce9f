# Input masks: the validation-pattern language (portable model code).
list(APPEND QV_MODEL_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/pattern.cpp
  ${CMAKE_CURRENT_LIST_DIR}/pattern_lint.cpp
)
# Placeholder mask edit: template rules (model) and the window class.
list(APPEND QV_MODEL_SOURCES ${CMAKE_CURRENT_LIST_DIR}/placeholder_rules.cpp)
list(APPEND QV_WIN_SOURCES ${CMAKE_CURRENT_LIST_DIR}/placeholder.cpp)
# Masked edit core and numeric fields: text model (model) and window classes.
list(APPEND QV_MODEL_SOURCES ${CMAKE_CURRENT_LIST_DIR}/mask_rules.cpp)
list(APPEND QV_WIN_SOURCES ${CMAKE_CURRENT_LIST_DIR}/maskedit.cpp ${CMAKE_CURRENT_LIST_DIR}/numeric.cpp)
# Date and time fields: layout, Tab and display rules (model) and the window classes.
list(APPEND QV_MODEL_SOURCES ${CMAKE_CURRENT_LIST_DIR}/date_rules.cpp)
list(APPEND QV_WIN_SOURCES ${CMAKE_CURRENT_LIST_DIR}/datetime_field.cpp ${CMAKE_CURRENT_LIST_DIR}/date_edits.cpp)
# Installed headers: what a host includes, and what those include.
list(APPEND QV_PUBLIC_HEADERS
  ${CMAKE_CURRENT_LIST_DIR}/date_edits.h
  ${CMAKE_CURRENT_LIST_DIR}/datetime_field.h
  ${CMAKE_CURRENT_LIST_DIR}/maskedit.h
  ${CMAKE_CURRENT_LIST_DIR}/numeric.h
  ${CMAKE_CURRENT_LIST_DIR}/pattern.h
  ${CMAKE_CURRENT_LIST_DIR}/pattern_lint.h
  ${CMAKE_CURRENT_LIST_DIR}/placeholder.h
  ${CMAKE_CURRENT_LIST_DIR}/placeholder_rules.h
)
