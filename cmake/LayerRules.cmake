# Include rules between the top folders of src/, checked at configure time.
#
# `layers` lists the folders from the top layer to the bottom one. A file may
# include headers of its own folder and of folders listed after it; an include
# of a folder listed before it fails the configure with the file and the line.
# Files in `core_folders` must also never reach for a widget header, so the
# core library stays headless.
function(tamrick_check_layers source_dir layers core_folders)
  set(widget_pattern "#include *<(QtWidgets|QWidget|QApplication|QMainWindow|QDialog|QMessageBox)")
  set(index 0)
  foreach(folder IN LISTS layers)
    file(GLOB_RECURSE files ${source_dir}/${folder}/*.cpp ${source_dir}/${folder}/*.h)
    foreach(file IN LISTS files)
      file(RELATIVE_PATH shown ${source_dir} ${file})
      file(STRINGS ${file} includes REGEX "^#include \"[a-z]+/")
      foreach(line IN LISTS includes)
        string(REGEX REPLACE "^#include \"([a-z]+)/.*" "\\1" included "${line}")
        list(FIND layers ${included} included_index)
        if(included_index GREATER_EQUAL 0 AND included_index LESS index)
          message(FATAL_ERROR "src/${shown} is in layer '${folder}' but includes the higher layer "
                              "'${included}': ${line}")
        endif()
      endforeach()
      if(folder IN_LIST core_folders)
        file(STRINGS ${file} widget_includes REGEX "${widget_pattern}")
        if(widget_includes)
          message(FATAL_ERROR "src/${shown} is core code but includes a widget header: ${widget_includes}")
        endif()
      endif()
    endforeach()
    math(EXPR index "${index} + 1")
  endforeach()
endfunction()
