# Platform layer: Windows only.
list(APPEND QV_WIN_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/window.cpp
  ${CMAKE_CURRENT_LIST_DIR}/module.cpp
)
