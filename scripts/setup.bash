# The functions that the scripts share; sourced, not run. All messages go to standard error.

project_directory=$(CDPATH='' cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd)
package_list=$project_directory/scripts/packages.txt
build_root=$project_directory/build

say() {
    printf '%s\n' "$*" >&2
}

# Runs a command and shows its output only when it fails.
quietly() {
    local log
    log=$(mktemp)
    if "$@" >"$log" 2>&1 </dev/null; then
        rm -f "$log"
    else
        local status=$?
        cat "$log" >&2
        rm -f "$log"
        return "$status"
    fi
}

as_root() {
    if [[ $EUID -eq 0 ]]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        say "需要 root 权限或 sudo 来安装缺少的软件包。"
        return 1
    fi
}

# Installs the missing packages. The stamp file avoids all package calls as long as neither the list nor the
# system's package database has changed.
ensure_packages() {
    local stamp=$build_root/.packages
    if [[ -e $stamp && $stamp -nt $package_list && ! /var/lib/dpkg/status -nt $stamp ]]; then
        return
    fi
    local package
    local -a missing=()
    while read -r package; do
        [[ -z $package || $package == \#* ]] && continue
        [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || missing+=("$package")
    done <"$package_list"
    if ((${#missing[@]})); then
        say "正在安装缺少的软件包：${missing[*]}"
        quietly as_root env DEBIAN_FRONTEND=noninteractive apt-get update
        quietly as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"
    fi
    mkdir -p "$build_root"
    touch "$stamp"
}

# build PRESET TARGET...: brings the targets of a preset up to date.
build() {
    local preset=$1
    shift
    local directory=$build_root/$preset
    mkdir -p "$directory"
    {
        # Only one build of a tree may run at a time.
        flock 9
        if [[ ! -e $directory/build.ninja ]]; then
            say "正在首次构建（${preset}），请稍候……"
            (cd "$project_directory" && quietly cmake --preset "$preset")
        fi
        quietly ninja -C "$directory" "$@"
    } 9>"$directory/.lock"
}
