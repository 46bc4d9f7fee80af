# Fetches what the report page is linted and tested with. To be sourced by bash in the project's
# folder.
#
# The versions of all packages are pinned in tests/page/, so what passes today passes tomorrow.

# fetch_page_tools NAME [PACKAGE...]: fills $page_tools, with the help of these Debian packages. False
# when that cannot be, which is said in the name of the check NAME.
page_tools=$PWD/build/page-tools
fetch_page_tools() {
    local name=$1 missing=()
    shift
    # Node.js may come from elsewhere than Debian; then its npm is not Debian's either.
    command -v node >/dev/null || missing+=(nodejs)
    command -v npm >/dev/null || missing+=(npm)
    missing+=("$@")
    if [ "${#missing[@]}" -gt 0 ] && ! scripts/install-packages "${missing[@]}"; then
        echo "$name: SKIPPED, these packages cannot be installed: ${missing[*]}"
        return 1
    fi
    mkdir -p "$page_tools"
    # Fetched once; again when the versions change or an earlier fetch was cut short.
    if cmp -s tests/page/package-lock.json "$page_tools/installed"; then return; fi
    rm -f "$page_tools/installed"
    cp tests/page/package.json tests/page/package-lock.json "$page_tools"
    if ! npm ci --prefix "$page_tools" --no-audit --no-fund --ignore-scripts \
        >"$page_tools/log" 2>&1; then
        cat "$page_tools/log"
        echo "$name: SKIPPED, the npm packages cannot be fetched"
        return 1
    fi
    cp tests/page/package-lock.json "$page_tools/installed"
}
