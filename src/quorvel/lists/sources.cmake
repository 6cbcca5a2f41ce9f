# Lists: the report list with typed rows, its sort header, the print-list
# interface and the built-in print-list object, configuration list and combo
# boxes.
qv_family_by_name(${CMAKE_CURRENT_LIST_DIR})
