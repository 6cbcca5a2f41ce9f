# Portable code shared by the model and the Windows build.
list(APPEND QV_MODEL_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/oledate.cpp
  ${CMAKE_CURRENT_LIST_DIR}/utf8.cpp
)
