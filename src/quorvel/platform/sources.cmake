# Platform layer: Windows only.
list(APPEND QV_WIN_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/window.cpp
  ${CMAKE_CURRENT_LIST_DIR}/module.cpp
)
list(APPEND QV_WIN_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/controls.cpp
  ${CMAKE_CURRENT_LIST_DIR}/checklistbox.cpp
  ${CMAKE_CURRENT_LIST_DIR}/dialog.cpp
  ${CMAKE_CURRENT_LIST_DIR}/datetime.cpp
)
