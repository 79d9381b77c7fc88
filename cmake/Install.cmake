# Nothing yet.
