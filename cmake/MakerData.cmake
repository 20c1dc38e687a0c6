# Everything that belongs to the maker rather than to the program, as cache variables, so that a
# fork or a packager sets it at configure time: cmake -DTAVRIN_UPDATE_HOST=updates.example.org
# The defaults are placeholders; .invalid is reserved and never resolves (RFC 2606).
set(TAVRIN_UPDATE_HOST "updates.tavrin.invalid" CACHE STRING "Host (and port) of the update server")
set(TAVRIN_UPDATE_URL "https://${TAVRIN_UPDATE_HOST}/version.json"
  CACHE STRING "Address of the update manifest")
set(TAVRIN_IP_ECHO_URL "https://ifconfig.me/ip"
  CACHE STRING "Service that answers a GET with the caller's address as plain text")
# What the author page shows; a row without a value is not there. Links are whole addresses.
set(TAVRIN_AUTHOR_NAME "Tên Tác Giả" CACHE STRING "Author's name")
set(TAVRIN_AUTHOR_PHONE "0000 000 000" CACHE STRING "Author's phone number")
set(TAVRIN_AUTHOR_ZALO "https://zalo.invalid/0000000000" CACHE STRING "Author's Zalo account")
set(TAVRIN_AUTHOR_TELEGRAM "https://telegram.invalid/ten_tac_gia" CACHE STRING "Author's Telegram account")
set(TAVRIN_AUTHOR_FACEBOOK "https://facebook.invalid/ten.tac.gia" CACHE STRING "Author's Facebook profile")
set(TAVRIN_WEBSITE "https://tavrin.invalid" CACHE STRING "Maker's web site, which has the guide as /guide.html")
set(TAVRIN_BANK_NAME "Ngân Hàng Ví Dụ" CACHE STRING "Bank that takes donations")
set(TAVRIN_BANK_ACCOUNT_HOLDER "TEN CHU TAI KHOAN" CACHE STRING "Holder of the account there")
set(TAVRIN_BANK_ACCOUNT_NUMBER "0000 0000 0000" CACHE STRING "Number of the account there")
# What packages and metadata say besides; LicenseRef-proprietary is SPDX for "no licence that others know".
set(TAVRIN_MAINTAINER "Tavrin <tac-gia@tavrin.invalid>" CACHE STRING "Who answers for the package, with an address")
set(TAVRIN_LICENSE "LicenseRef-proprietary" CACHE STRING "Licence of the program, as an SPDX expression")
set(TAVRIN_VERSION "${PROJECT_VERSION}" CACHE STRING "Version this build reports about itself")

configure_file(${CMAKE_CURRENT_LIST_DIR}/MakerData.h.in ${CMAKE_BINARY_DIR}/generated/MakerData.h @ONLY)
file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/data/version CONTENT "@TAVRIN_VERSION@\n" @ONLY)
