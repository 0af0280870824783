# Options that every target of the project shares, by linking sentrel_options.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)

add_library(sentrel_options INTERFACE)
target_include_directories(sentrel_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(sentrel_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
  -Woverloaded-virtual -Wno-missing-field-initializers -Werror
  # False alarms of g++ 12 once it optimises: "text" + std::string as an overlapping copy (its bug
  # 105651), and a std::variant's other alternatives as read before they are set.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
  $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)

if(SENTREL_PRECOMPILE)
  target_precompile_headers(sentrel_options INTERFACE
    <algorithm> <chrono> <functional> <map> <memory> <optional> <string> <variant> <vector>)
endif()

if(SENTREL_SANITIZE)
  target_compile_options(sentrel_options INTERFACE
    -fsanitize=${SENTREL_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(sentrel_options INTERFACE -fsanitize=${SENTREL_SANITIZE})
endif()
