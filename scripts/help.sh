# Sourced by the scripts: --help shows a script's own first comment.

show_help() {
  sed -n '2,/^[^#]/ { /^#/ s/^# \{0,1\}//p }' "$0"
}

case ${1:-} in
  -h | --help)
    show_help
    exit 0
    ;;
esac
