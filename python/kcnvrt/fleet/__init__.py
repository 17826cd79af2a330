"""Converts newline-delimited records on a Dask cluster: `python3 -m kcnvrt.fleet --help`.

What becomes of a record is what `kcnvrt stream` makes of it. Dask and fsspec are needed here and nowhere else.
"""
