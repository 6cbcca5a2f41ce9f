# Library frame: portable model code (also built natively) and the Windows side.
list(APPEND QV_MODEL_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/catalog.cpp
  ${CMAKE_CURRENT_LIST_DIR}/codepage_tables.cpp
  ${CMAKE_CURRENT_LIST_DIR}/codepages.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ini_store.cpp
  ${CMAKE_CURRENT_LIST_DIR}/number_text.cpp
  ${CMAKE_CURRENT_LIST_DIR}/rtf_text.cpp
)
list(APPEND QV_WIN_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/app.cpp
  ${CMAKE_CURRENT_LIST_DIR}/host_objects.cpp
  ${CMAKE_CURRENT_LIST_DIR}/services.cpp
  ${CMAKE_CURRENT_LIST_DIR}/session.cpp
  ${CMAKE_CURRENT_LIST_DIR}/siblings.cpp
  ${CMAKE_CURRENT_LIST_DIR}/va_config.cpp
)
# Installed headers: what a host includes, and what those include.
list(APPEND QV_PUBLIC_HEADERS
  ${CMAKE_CURRENT_LIST_DIR}/app.h
  ${CMAKE_CURRENT_LIST_DIR}/host_objects.h
  ${CMAKE_CURRENT_LIST_DIR}/services.h
  ${CMAKE_CURRENT_LIST_DIR}/session.h
  ${CMAKE_CURRENT_LIST_DIR}/siblings.h
  ${CMAKE_CURRENT_LIST_DIR}/va_config.h
  ${CMAKE_CURRENT_LIST_DIR}/zt_lang.h
)
