# Auxiliary windows: splitter, line-numbered edit, search fields.
qv_family_by_name(${CMAKE_CURRENT_LIST_DIR})
