# The value-added control.
qv_family_by_name(${CMAKE_CURRENT_LIST_DIR})
