# Portable code shared by the model and the Windows build.
list(APPEND QV_MODEL_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/dpi_rules.cpp
  ${CMAKE_CURRENT_LIST_DIR}/oledate.cpp
  ${CMAKE_CURRENT_LIST_DIR}/shell_text.cpp
  ${CMAKE_CURRENT_LIST_DIR}/utf8.cpp
)
# Installed headers: what a host includes, and what those include.
list(APPEND QV_PUBLIC_HEADERS
  ${CMAKE_CURRENT_LIST_DIR}/api.h
  ${CMAKE_CURRENT_LIST_DIR}/box.h
  ${CMAKE_CURRENT_LIST_DIR}/dpi_rules.h
)
