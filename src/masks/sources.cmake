# Input masks: the validation-pattern language (portable model code).
list(APPEND QV_MODEL_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/pattern.cpp
  ${CMAKE_CURRENT_LIST_DIR}/pattern_lint.cpp
)
