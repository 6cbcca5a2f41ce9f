# Views and domain controls: viewers, button container, colour button.
qv_family_by_name(${CMAKE_CURRENT_LIST_DIR})
