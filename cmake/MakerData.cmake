# Everything that belongs to the maker rather than to the program, as cache variables, so that a
# fork or a packager sets it at configure time: cmake -DTAVRIN_UPDATE_HOST=updates.example.org
# The defaults are placeholders; .invalid is reserved and never resolves (RFC 2606).
set(TAVRIN_UPDATE_HOST "updates.tavrin.invalid" CACHE STRING "Host (and port) of the update server")
set(TAVRIN_UPDATE_URL "https://${TAVRIN_UPDATE_HOST}/version.json"
  CACHE STRING "Address of the update manifest")
set(TAVRIN_IP_ECHO_URL "https://ifconfig.me/ip"
  CACHE STRING "Service that answers a GET with the caller's address as plain text")
set(TAVRIN_VERSION "${PROJECT_VERSION}" CACHE STRING "Version this build reports about itself")

configure_file(${CMAKE_CURRENT_LIST_DIR}/MakerData.h.in ${CMAKE_BINARY_DIR}/generated/MakerData.h @ONLY)
