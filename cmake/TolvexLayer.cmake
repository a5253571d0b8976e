# One function declares a layer: its sources and the layers below that it may use. The order of the
# calls is the order of the layers, so a ring cannot be written. All headers share two roots, so
# scripts/check_layers.py reads these calls and fails on an include that points up or sideways.

function(tolvex_layer name folder)
  cmake_parse_arguments(L "" "" "FILES;USES;SYSTEM" ${ARGN})
  add_library(tolvex_${name} STATIC)
  add_library(tolvex::${name} ALIAS tolvex_${name})
  foreach(below IN LISTS L_USES)
    if(NOT TARGET tolvex::${below})
      message(FATAL_ERROR "${name} may not use ${below}: it is not below it")
    endif()
    target_link_libraries(tolvex_${name} PUBLIC tolvex::${below})
  endforeach()
  target_link_libraries(tolvex_${name} PUBLIC ${L_SYSTEM})
  target_include_directories(tolvex_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR})
  foreach(stem IN LISTS L_FILES)
    target_sources(tolvex_${name} PRIVATE ${PROJECT_SOURCE_DIR}/${folder}/${stem}.cpp)
  endforeach()
endfunction()
