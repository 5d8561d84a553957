# Debian packages: which are needed, which are missing, and getting them.
# Sourced by ./run.

# needed_packages USE... prints the packages for these uses; all without any.
needed_packages() {
  awk -v uses=" $* " '!/^#/ && NF && (uses == "  " || index(uses, " " $1 " ")) { print $2 }' \
    "$root/scripts/packages.txt"
}

missing_packages() {
  local package
  for package in $(needed_packages "$@"); do
    is_installed "$package" || echo "$package"
  done
}

is_installed() {
  [[ $(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
}

# Sets `as_root` to what makes a command run as root; fails where nothing does.
find_root() {
  if [[ $(id -u) == 0 ]]; then
    as_root=(env)
  elif sudo -n true 2>/dev/null; then
    as_root=(sudo -n env)
  else
    return 1
  fi
}

# ensure_packages USE... leaves the machine with the packages for these uses.
ensure_packages() {
  if ! command -v dpkg-query >/dev/null; then
    say "This is not a Debian system: taking it that what scripts/packages.txt names is there."
    return
  fi
  local missing as_root
  mapfile -t missing < <(missing_packages "$@")
  [[ ${#missing[@]} -gt 0 ]] || return 0
  find_root || fail "Missing packages: ${missing[*]}" \
    "Install them with: sudo apt-get install --no-install-recommends ${missing[*]}"
  say "Installing packages: ${missing[*]}"
  logged packages install_packages "${missing[@]}" ||
    fail "The packages could not be installed; what apt-get said stands above." \
      "Once that is mended, run again, or install them with:" \
      "sudo apt-get install --no-install-recommends ${missing[*]}"
}

install_packages() {
  "${as_root[@]}" apt-get update || say "Not every package list could be renewed; going on with what is there."
  "${as_root[@]}" DEBIAN_FRONTEND=noninteractive \
    apt-get install --yes --no-install-recommends -o DPkg::Lock::Timeout=120 "$@"
}
