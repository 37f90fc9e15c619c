#!/usr/bin/env bash
# zor-tool summary, track and csv --numeric on the synthetic drive of
# data/telemetry/make_drive.py: the figures against the ones the script
# computed from the rules, the GPX, KML and GeoJSON read back by Python's
# own readers (and by GDAL's ogrinfo when it is installed), and the summary
# of an archive without times or coordinates and of one whose time goes back.
set -u
bin=$1
data=$2/telemetry
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
export TZ=UTC
mask=$(python3 -c "import json,sys; print(json.load(open(sys.argv[1]))['mask'])" "$data/drive.expected.json")
bare=$(python3 -c "import json,sys; print(json.load(open(sys.argv[1]))['bare_mask'])" "$data/drive.expected.json")
args=(--protocol 3 --mask "$mask" --in "$data/drive.bin")
failed=0
"$bin/zor-tool" summary "${args[@]}" --json >"$tmp/summary.json" || failed=1
for f in gpx kml geojson; do "$bin/zor-tool" track "${args[@]}" --format $f --out "$tmp/track.$f" || failed=1; done
"$bin/zor-tool" csv "${args[@]}" --numeric --out "$tmp/numeric.csv" || failed=1
"$bin/zor-tool" summary --protocol 3 --mask "$bare" --in "$data/drive_bare.bin" --json >"$tmp/bare.json" || failed=1
"$bin/zor-tool" summary --protocol 3 --mask "$mask" --in "$data/drive_back.bin" --json >"$tmp/back.json" || failed=1
"$bin/zor-tool" track "${args[@]}" --format svg >/dev/null 2>&1
[ $? = 2 ] || { echo "FAIL --format svg is a usage error"; failed=1; }

python3 - "$tmp" "$data/drive.expected.json" <<'PY' || failed=1
import csv, json, math, sys
import xml.etree.ElementTree as ET
tmp, exp = sys.argv[1], json.load(open(sys.argv[2]))
bad = []
def check(what, ok):
    print(('ok   ' if ok else 'FAIL ') + what)
    ok or bad.append(what)
s = json.load(open(tmp + '/summary.json'))
check('records', s['records'] == exp['records'])
check('distance %.3f km' % s['distance_km'], abs(s['distance_km'] - exp['distance_km']) < 0.005)
check('mileage difference', abs(s['mileage_km'] - exp['mileage_km']) < 0.01)
check('engine hours', abs(s['engine_hours'] - exp['engine_hours']) < 0.001)
check('max speed', abs(s['max_speed_kmh'] - exp['max_speed_kmh']) < 0.06)
check('gaps reported, not added', [g['record'] for g in s['gaps']] == exp['gaps'])
keys = ('first_record', 'last_record', 'start', 'end')
check('trips (a short halt stays inside)', [{k: t[k] for k in keys} for t in s['trips']] == exp['trips'])
check('trip distances add up', abs(sum(t['distance_km'] for t in s['trips']) - s['distance_km']) < 0.01)
check('stops', [{k: t[k] for k in keys + ('duration_s',)} for t in s['stops']] == exp['stops'])
fe = s['fuel_events']
check('fuel events: kinds and fields', [(e['kind'], e['field']) for e in fe]
      == [(e['kind'], e['field']) for e in exp['fuel_events']])
check('fuel events: records and changes within the noise', all(
    abs(a['record'] - b['record']) <= 1 and abs(a['change'] - b['change']) <= 6
    for a, b in zip(fe, exp['fuel_events'])))
g = ET.parse(tmp + '/track.gpx').getroot()
ns = {'g': 'http://www.topografix.com/GPX/1/1'}
pts = g.findall('.//g:trkpt', ns)
check('gpx 1.1: a segment per unbroken part', g.get('version') == '1.1' and len(g.findall('.//g:trkseg', ns)) == 3)
check('gpx: every fix, none at 0,0', len(pts) == exp['records'] - 1 and all(float(p.get('lat')) > 1 for p in pts))
check('gpx: time, elevation, speed', all(p.find('g:time', ns) is not None and p.find('g:ele', ns) is not None
                                        and p.find('.//{*}speed', ns) is not None for p in pts))
start = exp['stops'][0]['start']
check('gpx: first point', pts[0].get('lat') == '55.7500000' and pts[0].find('g:time', ns).text == start)
k = ET.parse(tmp + '/track.kml').getroot()
kn = {'k': 'http://www.opengis.net/kml/2.2'}
lines = k.findall('.//k:LineString/k:coordinates', kn)
check('kml 2.2: LineStrings and a placemark per stop', len(lines) == 2 and len(k.findall('.//k:Point', kn)) == 3)
first = lines[0].text.split()[0].split(',')
check('kml: lon,lat order', abs(float(first[0]) - 37.61) < 1e-6 and abs(float(first[1]) - 55.75) < 1e-6)
j = json.load(open(tmp + '/track.geojson'))
kinds = [f['properties']['kind'] for f in j['features']]
check('geojson: collection of track, stops, fuel events', j['type'] == 'FeatureCollection'
      and kinds.count('track') == 2 and kinds.count('stop') == 3 and kinds.count('refuel') == kinds.count('drain') == 1)
c0 = j['features'][0]['geometry']['coordinates'][0]
check('geojson: [longitude, latitude]', j['features'][0]['geometry']['type'] == 'LineString'
      and abs(c0[0] - 37.61) < 1e-6 and abs(c0[1] - 55.75) < 1e-6)
rows = list(csv.DictReader(open(tmp + '/numeric.csv', newline='', encoding='utf-8')))
r = rows[0]
check('numeric csv: names, ISO time, degrees, numbers', len(rows) == exp['records'] and r['Time'] == start
      and float(r['Latitude']) == 55.75 and float(r['Longitude']) == 37.61 and r['NGaugeValid'] == '1'
      and float(r['Motochas']) == 100.0 and float(r['Altitude']) == 150.0 and r['EngineWork'] == '0')
b = json.load(open(tmp + '/bare.json'))
check('no times or coordinates: said, nothing invented', b['distance_km'] is None and b['start'] is None
      and any(n.startswith('distance') for n in b['not_computed']) and any('Time' in n for n in b['not_computed'])
      and len(b['trips']) == 1 and b['trips'][0]['first_record'] == 4)
k = json.load(open(tmp + '/back.json'))
check('a jump back in time: a gap, its step not added', [(g['record'], g['kind']) for g in k['gaps']]
      == [(exp['back']['gap_record'], 'time_back')] and abs(k['distance_km'] - exp['back']['distance_km']) < 0.001)
sys.exit(1 if bad else 0)
PY

if command -v ogrinfo >/dev/null; then
  for f in gpx kml geojson; do
    if ogrinfo -ro -al -so "$tmp/track.$f" >/dev/null 2>&1; then echo "ok   ogrinfo reads $f"
    else echo "FAIL ogrinfo $f"; failed=1; fi
  done
fi
exit $failed
