# Resources (.rc) and message tables (.mc): the same files for both systems, compiled by the message
# and resource compilers of the binutils for Windows. The Windows build links what they make; here the
# compiled resources lie in the program as they are, and the layer reads them.
if(NOT WIN32)
  find_program(QG_MESSAGE_COMPILER x86_64-w64-mingw32-windmc REQUIRED)
  find_program(QG_RESOURCE_COMPILER x86_64-w64-mingw32-windres REQUIRED)
endif()
# qg_add_resources(TARGET SCRIPT MESSAGES): an object library, so that the resources are in every
# program that links it. The files are given from the current source folder; the script includes the
# message table as <name of MESSAGES>.rc.
function(qg_add_resources target script messages)
  get_filename_component(script ${script} ABSOLUTE)
  get_filename_component(home ${script} DIRECTORY)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/${target})
  file(MAKE_DIRECTORY ${folder})
  qg_message_table(${messages} ${folder} table)
  if(WIN32)
    qg_windows_resources(${target} ${script} ${home} ${folder} ${table})
  else()
    qg_layer_resources(${target} ${script} ${home} ${folder} ${table})
  endif()
endfunction()

# The script that names the table's files, in the folder.
function(qg_message_table messages folder result)
  get_filename_component(stem ${messages} NAME_WE)
  # The compiler ends the lines of a text as the file does.
  configure_file(${messages} ${folder}/${stem}.mc @ONLY NEWLINE_STYLE CRLF)
  add_custom_command(OUTPUT ${folder}/${stem}.rc
    COMMAND ${QG_MESSAGE_COMPILER} -U -C 65001 -h ${folder} -r ${folder} ${folder}/${stem}.mc
    DEPENDS ${folder}/${stem}.mc
    VERBATIM)
  set(${result} ${folder}/${stem}.rc PARENT_SCOPE)
endfunction()

# What a script in this folder may name besides what the preprocessor includes.
function(qg_resource_files home result)
  file(GLOB files CONFIGURE_DEPENDS ${home}/images/*.ico ${home}/images/*.bmp ${home}/*.manifest)
  set(${result} ${files} PARENT_SCOPE)
endfunction()

# The resource compiler neither takes C++ headers nor numbers that end in "u": so the macros are taken
# from the headers beforehand without their text, and the letter is taken away.
function(qg_layer_resources target script home folder table)
  get_filename_component(name ${script} NAME_WE)
  qg_resource_files(${home} files)
  set(compiled ${folder}/${name}.res)
  set(read_only --preprocessor-arg=-E --preprocessor-arg=-xc++ --preprocessor-arg=-fpreprocessed)
  add_custom_command(OUTPUT ${compiled}
    COMMAND ${CMAKE_CXX_COMPILER} -E -x c++ -DRC_INVOKED -I ${home} -I ${folder}
      -I ${CMAKE_SOURCE_DIR}/platform/include
      -imacros windows.h -imacros commctrl.h -imacros winver.h
      -MD -MF ${compiled}.d -MT ${compiled} ${script} -o ${folder}/${name}.i.rc
    COMMAND sed -E -i "s/\\b(0x[0-9A-Fa-f]+|[0-9]+)u\\b/\\1/g" ${folder}/${name}.i.rc
    COMMAND ${QG_RESOURCE_COMPILER} -c 65001 -O res --preprocessor=${CMAKE_CXX_COMPILER} ${read_only}
      -I ${home} -I ${folder} ${folder}/${name}.i.rc ${compiled}
    DEPENDS ${script} ${files} ${table}
    DEPFILE ${compiled}.d
    VERBATIM)
  configure_file(${CMAKE_SOURCE_DIR}/cmake/compiled_resources.cpp.in ${folder}/${name}.cpp @ONLY)
  set_source_files_properties(${folder}/${name}.cpp PROPERTIES OBJECT_DEPENDS ${compiled})
  add_library(${target} OBJECT ${folder}/${name}.cpp)
  target_include_directories(${target} PRIVATE
    ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/platform/include)
  target_link_libraries(${target} PRIVATE qg_warnings INTERFACE platform)
endfunction()

function(qg_windows_resources target script home folder table)
  file(GLOB included CONFIGURE_DEPENDS ${home}/*.rc)
  qg_resource_files(${home} files)
  enable_language(RC)
  add_library(${target} OBJECT ${script})
  target_include_directories(${target} PRIVATE ${home} ${folder})
  set_source_files_properties(${script} PROPERTIES
    OBJECT_DEPENDS "${included};${files};${table}")
endfunction()
