# Platform layer: Windows only.
list(APPEND QV_WIN_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/window.cpp
  ${CMAKE_CURRENT_LIST_DIR}/module.cpp
  ${CMAKE_CURRENT_LIST_DIR}/accessible.cpp
  ${CMAKE_CURRENT_LIST_DIR}/dpi.cpp
)
list(APPEND QV_WIN_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/controls.cpp
  ${CMAKE_CURRENT_LIST_DIR}/checklistbox.cpp
  ${CMAKE_CURRENT_LIST_DIR}/dialog.cpp
  ${CMAKE_CURRENT_LIST_DIR}/datetime.cpp
)
# Installed headers: what a host includes, and what those include.
list(APPEND QV_PUBLIC_HEADERS
  ${CMAKE_CURRENT_LIST_DIR}/accessible.h
  ${CMAKE_CURRENT_LIST_DIR}/checklistbox.h
  ${CMAKE_CURRENT_LIST_DIR}/com.h
  ${CMAKE_CURRENT_LIST_DIR}/controls.h
  ${CMAKE_CURRENT_LIST_DIR}/datetime.h
  ${CMAKE_CURRENT_LIST_DIR}/dialog.h
  ${CMAKE_CURRENT_LIST_DIR}/dpi.h
  ${CMAKE_CURRENT_LIST_DIR}/gdi.h
  ${CMAKE_CURRENT_LIST_DIR}/imagelist.h
  ${CMAKE_CURRENT_LIST_DIR}/window.h
)
