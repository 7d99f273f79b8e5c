# Debian systems in folders, for what a machine that has been worked on cannot tell. Sourced, by root.

# Makes a minimal Debian 12 from the mirror that this machine's apt uses.
make_machine() { # FOLDER ARCHITECTURE PACKAGE[,PACKAGE...]
    local mirror
    mirror=$(apt-get indextargets --format '$(SITE)' 'Created-By: Packages' 'Release: bookworm' | head -n 1)
    mmdebstrap --quiet --variant=minbase --architectures="$2" --include="$3" bookworm "$1" "${mirror:?no mirror for bookworm}"
}

# Runs a command in a machine, with an environment of its own and, where PLACE is not empty, that folder of this machine
# at the same path. Its mounts are private: they go with the command, before anybody removes the folder they stand in.
# `isolation` may hold further options of unshare.
isolation=()
enter_machine() { # FOLDER PLACE COMMAND...
    unshare --mount "${isolation[@]}" -- /bin/sh -euc '
        root=$1 place=$2
        shift 2
        # The root of a machine that makes machines itself has to be a place where something is mounted.
        mount --bind "$root" "$root"
        mount -t proc proc "$root/proc"
        mount --rbind /dev "$root/dev"
        if [ -n "$place" ]; then
            mkdir -p "$root$place"
            mount --bind "$place" "$root$place"
        fi
        exec chroot "$root" /usr/bin/env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin "$@"' sh "$@"
}
