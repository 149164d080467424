# The three OpenCV modules that the editor uses, as the targets OpenCV::core, OpenCV::imgproc and OpenCV::photo.
#
# Debian keeps OpenCV's own package file in libopencv-dev, which brings in every module with all that they need, hundreds
# of packages. The development packages of single modules are enough here.

find_path(OpenCV_INCLUDE_DIR opencv2/core.hpp PATH_SUFFIXES opencv4)
set(required OpenCV_INCLUDE_DIR)
foreach(module IN LISTS OpenCV_FIND_COMPONENTS)
    find_library(OpenCV_${module}_LIBRARY opencv_${module})
    list(APPEND required OpenCV_${module}_LIBRARY)
endforeach()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(OpenCV REQUIRED_VARS ${required})

foreach(module IN LISTS OpenCV_FIND_COMPONENTS)
    if(OpenCV_FOUND AND NOT TARGET OpenCV::${module})
        add_library(OpenCV::${module} UNKNOWN IMPORTED)
        set_target_properties(OpenCV::${module} PROPERTIES
            IMPORTED_LOCATION ${OpenCV_${module}_LIBRARY}
            INTERFACE_INCLUDE_DIRECTORIES ${OpenCV_INCLUDE_DIR})
    endif()
endforeach()
