# Resources (.rc) and message tables (.mc): the same files for both systems. Here they go through the
# layer's resource compiler, for Windows through windmc and windres.

# qg_add_resources(TARGET SCRIPT MESSAGES): an object library, so that the resources are in every
# program that links it. The files are given from the current source folder; the script includes the
# message table as <name of MESSAGES>.rc.
function(qg_add_resources target script messages)
  get_filename_component(stem ${messages} NAME_WE)
  get_filename_component(script ${script} ABSOLUTE)
  get_filename_component(messages ${messages} ABSOLUTE)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/${target})
  file(MAKE_DIRECTORY ${folder})
  if(WIN32)
    qg_windows_resources(${target} ${script} ${messages} ${stem} ${folder})
  else()
    qg_layer_resources(${target} ${script} ${messages} ${stem} ${folder})
  endif()
endfunction()

# What a script in this folder may name besides what the preprocessor includes.
function(qg_resource_files home result)
  file(GLOB files CONFIGURE_DEPENDS ${home}/images/*.ico ${home}/images/*.bmp ${home}/*.manifest)
  set(${result} ${files} PARENT_SCOPE)
endfunction()

function(qg_layer_resources target script messages stem folder)
  get_filename_component(name ${script} NAME)
  get_filename_component(home ${script} DIRECTORY)
  set(product ${folder}/${name})
  qg_resource_files(${home} files)
  add_custom_command(OUTPUT ${folder}/${stem}.rc
    COMMAND rescomp messages ${messages} ${folder}
    DEPENDS rescomp ${messages}
    VERBATIM)
  add_custom_command(OUTPUT ${product}.cpp
    COMMAND ${CMAKE_CXX_COMPILER} -E -x c++ -DRC_INVOKED -I ${home} -I ${folder}
      -I ${CMAKE_SOURCE_DIR}/platform/include
      -MD -MF ${product}.d -MT ${product}.cpp ${script} -o ${product}.i
    COMMAND rescomp script ${product}.i ${product}.cpp ${home} ${folder}
    DEPENDS rescomp ${script} ${files} ${folder}/${stem}.rc
    DEPFILE ${product}.d
    VERBATIM)
  add_library(${target} OBJECT ${product}.cpp)
  target_include_directories(${target} PRIVATE
    ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/platform/include)
  target_link_libraries(${target} PRIVATE qg_warnings INTERFACE platform)
endfunction()

function(qg_windows_resources target script messages stem folder)
  # windmc ends the lines of a text as the file does.
  configure_file(${messages} ${folder}/${stem}.mc @ONLY NEWLINE_STYLE CRLF)
  add_custom_command(OUTPUT ${folder}/${stem}.rc
    COMMAND ${QG_MESSAGE_COMPILER} -A -C 65001 -h ${folder} -r ${folder} ${folder}/${stem}.mc
    DEPENDS ${folder}/${stem}.mc
    VERBATIM)
  get_filename_component(home ${script} DIRECTORY)
  file(GLOB included CONFIGURE_DEPENDS ${home}/*.rc)
  qg_resource_files(${home} files)
  enable_language(RC)
  add_library(${target} OBJECT ${script})
  target_include_directories(${target} PRIVATE ${home} ${folder})
  set_source_files_properties(${script} PROPERTIES
    OBJECT_DEPENDS "${included};${files};${folder}/${stem}.rc")
endfunction()
