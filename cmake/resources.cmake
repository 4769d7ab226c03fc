# Resources (.rc) and message tables (.mc): the same files for both systems. Here they go through the
# layer's resource compiler, for Windows through windmc and windres.

# qg_add_resources(TARGET SCRIPT MESSAGES): an object library, so that the resources are in every
# program that links it. The script includes the message table as <name of MESSAGES>.rc.
function(qg_add_resources target script messages)
  get_filename_component(stem ${messages} NAME_WE)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/${target})
  file(MAKE_DIRECTORY ${folder})
  if(WIN32)
    qg_windows_resources(${target} ${script} ${messages} ${stem} ${folder})
  else()
    qg_layer_resources(${target} ${script} ${messages} ${stem} ${folder})
  endif()
endfunction()

function(qg_layer_resources target script messages stem folder)
  set(source ${CMAKE_CURRENT_SOURCE_DIR}/${script})
  add_custom_command(OUTPUT ${folder}/${stem}.rc
    COMMAND rescomp messages ${CMAKE_CURRENT_SOURCE_DIR}/${messages} ${folder}
    DEPENDS rescomp ${messages}
    VERBATIM)
  add_custom_command(OUTPUT ${folder}/${script}.cpp
    COMMAND ${CMAKE_CXX_COMPILER} -E -x c++ -DRC_INVOKED -I ${CMAKE_CURRENT_SOURCE_DIR} -I ${folder}
      -I ${CMAKE_SOURCE_DIR}/platform/include
      -MD -MF ${folder}/${script}.d -MT ${folder}/${script}.cpp ${source} -o ${folder}/${script}.i
    COMMAND rescomp script ${folder}/${script}.i ${folder}/${script}.cpp
      ${CMAKE_CURRENT_SOURCE_DIR} ${folder}
    DEPENDS rescomp ${script} ${folder}/${stem}.rc
    DEPFILE ${folder}/${script}.d
    VERBATIM)
  add_library(${target} OBJECT ${folder}/${script}.cpp)
  target_include_directories(${target} PRIVATE ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/platform/include)
  target_link_libraries(${target} PRIVATE qg_warnings INTERFACE platform)
endfunction()

function(qg_windows_resources target script messages stem folder)
  # windmc ends the lines of a text as the file does.
  configure_file(${messages} ${folder}/${messages} @ONLY NEWLINE_STYLE CRLF)
  add_custom_command(OUTPUT ${folder}/${stem}.rc
    COMMAND ${QG_MESSAGE_COMPILER} -A -C 65001 -h ${folder} -r ${folder} ${folder}/${messages}
    DEPENDS ${folder}/${messages}
    VERBATIM)
  enable_language(RC)
  add_library(${target} OBJECT ${script})
  target_include_directories(${target} PRIVATE ${folder} ${CMAKE_CURRENT_SOURCE_DIR})
  set_source_files_properties(${script} PROPERTIES OBJECT_DEPENDS ${folder}/${stem}.rc)
endfunction()
