// The names of ids. A column of ids is known by its name, or by its table and its name.

const ColumnTables = {
    mode: "<TMode>", channel: "<TChannel>", parent_channel: "<TChannel>", location: "<TLocation>",
    source_location: "<TLocation>", base_order_reference: "<TLocation>", rotor: "<TLocation>", gear: "<TLocation>",
    physical_gear: "<TLocation>", order_source: "<TLocation>", speed_source: "<TLocation>",
    instrument: "<TInstrument>", source_instrument: "<TInstrument>", second_source_instrument: "<TInstrument>",
    parameter: "<TInstrumentParam>", source_parameter: "<TInstrumentParam>",
    second_source_parameter: "<TInstrumentParam>", signal: "<TApplicationSignal>", trigger: "<TTrigger>",
    physical_mode: "<TPhysMode>", polygon: "<TIpPolygon>", second_polygon: "<TIpPolygon>", type: "<TAliasType>",
    bench: "<TAliasBench>", job: "<TResamplingGroup>", set: "<TProcessingUnit>", configuration: "<TTpSensorConfig>",
    procedure: "<TLearnProcedures>", learn_procedure_a: "<TLearnProcedures>", learn_procedure_b: "<TLearnProcedures>",
    "<TSensorGroupList>.group": "<TSensorGroup>", "<TSpeedSource>.referred_id": "<TApplicationSignal>",
    "<TRotorSpeedSource>.referred_id": "<TLocation>", "<TRotorSpeedReference>.referred_id": "<TLocation>",
    "<TRetype>.referred_id": "<TAliasType>",
};

class Names {
    constructor(data) {
        this.tables = new Map(data.tables.map(table => [table.tag, table]));
        this.maps = new Map();
        this.modes = data.keys.modes;
    }

    // The map from id to name of a table, from the first text in its rows.
    ofTable(tag) {
        let map = this.maps.get(tag);
        if (map === undefined) {
            const table = this.tables.get(tag);
            const columns = table.key.concat(table.row);
            const text = columns.findIndex(([, type]) => type === "text");
            map = new Map(table.rows.map(row => [row[0], row[text]]));
            if (tag === "<TMode>")
                for (const [id, name] of this.modes)
                    map.set(id, name);
            this.maps.set(tag, map);
        }
        return map;
    }

    // The names for a column of a table; null if it holds no ids, or those of the table itself.
    ofColumn(tag, column) {
        const names = ColumnTables[tag + "." + column] ?? ColumnTables[column];
        return names === undefined || names === tag ? null : this.ofTable(names);
    }

    // "11 1. gear drive", "any" for -1.
    text(tag, id) {
        const name = this.ofTable(tag).get(id);
        return id === -1 ? "any" : name ? id + " " + name : String(id);
    }
}
