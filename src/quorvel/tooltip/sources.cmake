# Tooltip: the mark-up engine and placement geometry (portable model code,
# also built natively) and the tooltip window (Windows side).
list(APPEND QV_MODEL_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/markup.cpp
  ${CMAKE_CURRENT_LIST_DIR}/placement.cpp
)
list(APPEND QV_WIN_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/gdi_surface.cpp
  ${CMAKE_CURRENT_LIST_DIR}/xtooltip.cpp
)
# Installed headers: what a host includes, and what those include.
list(APPEND QV_PUBLIC_HEADERS
  ${CMAKE_CURRENT_LIST_DIR}/markup.h
  ${CMAKE_CURRENT_LIST_DIR}/xtooltip.h
)
