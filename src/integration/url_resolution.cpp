#include "integration/url_resolution.h"

#include <algorithm>
#include <string>

namespace tolvo {

namespace {

/// The five parts of a URL reference, each with the delimiter that belongs to it, so that put together they are the
/// reference again (RFC 3986, appendix B).
struct Parts {
    std::string_view scheme;
    std::string_view authority;
    std::string_view path;
    std::string_view query;
    std::string_view fragment;

    std::string withPath(std::string_view newPath) const {
        return std::string(scheme).append(authority).append(newPath).append(query).append(fragment);
    }
};

std::string_view cutFrom(std::string_view& text, std::size_t position) {
    if (position == std::string_view::npos)
        return {};
    const std::string_view tail = text.substr(position);
    text.remove_suffix(tail.size());
    return tail;
}

Parts partsOf(const URL& url) {
    Parts parts;
    std::string_view rest = url.text();
    parts.fragment = cutFrom(rest, rest.find('#'));
    parts.query = cutFrom(rest, rest.find('?'));
    if (url.isAbsolute())
        parts.scheme = rest.substr(0, url.scheme().size() + 1);
    rest.remove_prefix(parts.scheme.size());
    if (rest.starts_with("//"))
        parts.authority = rest.substr(0, rest.find('/', 2));
    parts.path = rest.substr(parts.authority.size());
    return parts;
}

/// RFC 3986, section 5.2.4, for a path that begins with a solidus.
std::string withoutDotSegments(std::string_view path) {
    std::string result;
    while (!path.empty()) {
        const std::string_view segment = path.substr(0, path.find('/', 1));
        path.remove_prefix(segment.size());
        const bool isLast = path.empty();
        if (segment == "/..")
            result.erase(std::min(result.rfind('/'), result.size()));
        if (segment != "/." && segment != "/..")
            result += segment;
        else if (isLast)
            result += '/';
    }
    return result;
}

std::string_view folderOf(std::string_view path) {
    return path.substr(0, path.rfind('/') + 1);
}

std::string mergedPath(const Parts& base, std::string_view referencePath) {
    if (referencePath.starts_with('/'))
        return withoutDotSegments(referencePath);
    std::string folder(base.path.empty() ? "/" : folderOf(base.path));
    return withoutDotSegments(folder.append(referencePath));
}

} // namespace

std::optional<URL> resolved(const URL& reference, const URL& base) {
    const Parts baseParts = partsOf(base);
    Parts target = partsOf(reference);
    target.scheme = baseParts.scheme;
    target.authority = baseParts.authority;
    if (!target.path.empty())
        return URL::parse(target.withPath(mergedPath(baseParts, target.path)));
    if (target.query.empty())
        target.query = baseParts.query;
    return URL::parse(target.withPath(baseParts.path));
}

URL asFolder(const URL& url) {
    const Parts parts = partsOf(url);
    if (parts.path.ends_with('/'))
        return url;
    return URL::parse(parts.withPath(std::string(parts.path) + '/')).value_or(url);
}

std::optional<URL> appendingPathComponent(const URL& folder, std::string_view component) {
    const Parts parts = partsOf(folder);
    return URL::parse(parts.withPath(std::string(parts.path) + percentEncoded(component, "!$&'()*+,;=:@")));
}

bool isWebScheme(std::string_view lowerCaseScheme) {
    return lowerCaseScheme == "http" || lowerCaseScheme == "https";
}

} // namespace tolvo
