# The roots of scripts/try-desktops: Debian systems in directories. Sourced, after scripts/setup.bash.

tool_directory=$project_directory/tools/try-desktops

# The beginning of a command in a root, which follows it, with nothing but the loopback.
namespaces=(--mount --pid --ipc --uts --fork --kill-child)
# shellcheck disable=SC2034 # for scripts/try-desktops
alone=(unshare --net "${namespaces[@]}" -- "$tool_directory/enter")

# within ROOT COMMAND...: runs a command in a root with the network of this machine.
within() {
    unshare "${namespaces[@]}" -- "$tool_directory/enter" "$@"
}

# debian_sources: prints the archives of Debian that this machine's apt uses, as lines "URI RELEASE COMPONENT".
debian_sources() {
    apt-get indextargets --format '$(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' 'Origin: Debian' |
        sort -u
}

package_names() {
    sed '/^#/d; /^$/d' "$@"
}

root_apt() {
    local root=$1
    shift
    TRY_DESKTOPS_BINDS="" within "$root" env DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 \
        apt-get -y -q --no-install-recommends "$@"
}

# take_over_network ROOT: lets apt in a root reach the archives as this machine's apt does, with the same
# sources, proxies, certificates and name servers.
take_over_network() {
    local root=$1
    local keyring=/usr/share/keyrings/debian-archive-keyring.gpg
    local certificates=/etc/ssl/certs/ca-certificates.crt settings=$root/etc/apt/apt.conf.d/80network
    debian_sources | sed "s|^|deb [signed-by=$keyring] |" >"$root/etc/apt/sources.list"
    cp --dereference /etc/resolv.conf /etc/hosts "$root/etc/"
    : >"$settings"
    if [[ -e $certificates ]]; then
        cp --dereference "$certificates" "$root/etc/apt/certificates.crt"
        printf 'Acquire::https::CaInfo "/etc/apt/certificates.crt";\n' >"$settings"
    fi
    { apt-config dump | grep -iE '^Acquire::https?::' | grep -vi '::CaInfo' || true; } >>"$settings"
}

# make_root DESKTOP ROOT: sets up the root of a desktop, unless it is there with all its packages.
make_root() {
    local desktop=$1 root=$2 release archive wanted
    wanted=$(package_names "$tool_directory/packages/common.txt" "$tool_directory/packages/$desktop.txt")
    if [[ -e $root/.packages && $(<"$root/.packages") == "$wanted" ]]; then
        take_over_network "$root"
        return
    fi
    if [[ ! -e $root/.base ]]; then
        say "正在建立 $root……"
        release=$(. /etc/os-release && printf '%s' "$VERSION_CODENAME")
        archive=$(debian_sources | awk -v release="$release" '$2 == release { print $1; exit }')
        if [[ -z $archive ]]; then
            say "apt 没有 Debian $release 的软件源（先运行 apt-get update）。"
            return 1
        fi
        rm -rf --one-file-system "$root"
        mkdir -p "$root"
        quietly debootstrap --variant=minbase "$release" "$root" "$archive"
        touch "$root/.base"
    fi
    take_over_network "$root"
    # Nothing that is installed may start by itself.
    printf '#!/bin/sh\nexit 101\n' >"$root/usr/sbin/policy-rc.d"
    chmod 755 "$root/usr/sbin/policy-rc.d"
    say "正在安装 ${desktop} 的软件包……"
    quietly root_apt "$root" update
    # shellcheck disable=SC2086 # one word for each package
    quietly root_apt "$root" install $wanted
    quietly root_apt "$root" clean
    if ! within "$root" id trial >/dev/null 2>&1; then
        within "$root" useradd --create-home --shell /bin/bash trial
    fi
    within "$root" apt-mark showmanual | sort >"$root/.manual"
    printf '%s\n' "$wanted" >"$root/.packages"
}

# find_files ROOT: prints the files of a root, without those that apt, dpkg and the trial itself keep.
find_files() {
    (cd "$1" && find . -xdev \( -path ./var/lib/dpkg -o -path ./var/lib/apt -o -path ./var/cache -o \
        -path ./var/log -o -path ./home -o -path ./tmp -o -path ./run -o -path ./proc -o -path ./sys -o \
        -path ./dev -o -path ./trial -o -path ./results -o -path ./packages \) -prune -o -print | sort)
}

# recommended_packages FILE...: prints the names of what packages recommend, the first of alternatives.
recommended_packages() {
    local file
    for file in "$@"; do
        dpkg-deb --field "$file" Recommends | tr ',' '\n' | sed 's/|.*//; s/(.*//; s/[[:space:]]//g; /^$/d'
    done
}

# try_packages ROOT DIRECTORY EXTRA...: installs the packages of a directory in a root as apt does it, with what
# they depend on, and the extra packages; removes them again to see what is left, and installs them for the
# trial. Prints what is wrong, or nothing.
try_packages() {
    local root=$1 directory=$2 before after
    shift 2
    local -a files added extra=("$@")
    files=("$directory"/lexiquill_*.deb "$directory"/lexiquill-desktop_*.deb)
    mkdir -p "$root/packages"
    rm -f "$root"/packages/*.deb
    cp "${files[@]}" "$root/packages/"
    files=("${files[@]##*/}")
    quietly within "$root" dpkg --purge lexiquill-desktop lexiquill
    quietly root_apt "$root" update
    quietly root_apt "$root" install "${files[@]/#//packages/}" "${extra[@]}"
    if ((${#extra[@]} == 0)); then
        # What an earlier trial or version has needed must not help this one.
        mapfile -t added < <(comm -13 "$root/.manual" <(within "$root" apt-mark showmanual | sort) |
            grep -v '^lexiquill')
        if ((${#added[@]})); then
            quietly within "$root" apt-mark auto "${added[@]}"
        fi
        quietly root_apt "$root" -o APT::AutoRemove::RecommendsImportant=false \
            -o APT::AutoRemove::SuggestsImportant=false autoremove --purge
    fi
    quietly root_apt "$root" purge lexiquill lexiquill-desktop
    before=$(find_files "$root")
    quietly root_apt "$root" install "${files[@]/#//packages/}" "${extra[@]}"
    after=$(find_files "$root")
    if [[ $before == "$after" ]]; then
        printf '安装没有带来任何文件\n'
    fi
    quietly root_apt "$root" purge lexiquill lexiquill-desktop
    after=$(find_files "$root")
    diff <(printf '%s\n' "$before") <(printf '%s\n' "$after") | grep '^[<>]' || true
    grep -i lexiquill <<<"$after" | grep -v '^\./packages' || true
    quietly root_apt "$root" install "${files[@]/#//packages/}" "${extra[@]}"
}
